// A colour that is shared through a ZVColorResourceDB.
#ifndef ZV_ZVCORESR_H
#define ZV_ZVCORESR_H

#include "utils/zvcolor.h"
#include "utils/zvresrc.h"

class ZVColorResourceDB;

class ZV_EXPORT ZVColorResource : public ZVResource {
 public:
  // A copy of color; black for null.
  ZVColorResource(ZVColorResourceDB* db = nullptr, const ZVColor* color = nullptr);
  ~ZVColorResource() override;

  // Only the colour of a free resource may be changed.
  ZVColor* pColor() { return &color_; }
  const ZVColor* pColor() const { return &color_; }
  ZVColorResourceDB* pResourceDB() const;

  // 0xRRGGBB.
  int32_t sortKey() const override;
  // Colours are equal with their transparency, so two of one key may differ.
  int isEqual(const ZVResource* other) const override;

  // An attribute copy leaves the colour as it was, and that of a new resource black.
  ZV_SHAPE_FULL(ZVColorResource)
  ZVColor color_;
};

#endif
