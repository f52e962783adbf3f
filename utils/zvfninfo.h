// The metrics of a font, character by character: by default those of a fixed raster, written from left to
// right. A layer with a real font overrides the virtual operations.
//
// A character's bearing is the offset of its box from the pen, its spacing is how far the pen moves on
// behind it. The line feed is the line break: it has no box, and its spacing is the distance of two lines.
#ifndef ZV_ZVFNINFO_H
#define ZV_ZVFNINFO_H

#include "utils/zvgeom.h"
#include "utils/zvobject.h"

class ZV_EXPORT ZVFontInfo : public ZVObject {
 public:
  // A margin stands on either side of a line.
  ZVFontInfo(int32_t width = 6, int32_t height = 10, int32_t xMargin = 0, int32_t yMargin = 0,
             ZVDirectionEnum direction = ZV_DIRECTION_RIGHT);

  int32_t standardCharWidth() const { return standardCharWidth_; }
  int32_t standardCharHeight() const { return standardCharHeight_; }
  int32_t xMargin() const { return xMargin_; }
  int32_t yMargin() const { return yMargin_; }
  // The direction of writing.
  ZVDirectionEnum direction() const { return direction_; }

  virtual int32_t charWidth(char c);
  virtual int32_t charHeight(char c);
  virtual int32_t xBearing(char c);
  virtual int32_t yBearing(char c);
  virtual int32_t xSpacing(char c);
  virtual int32_t ySpacing(char c);

  ZV_SHAPE_VALUE(ZVFontInfo)
  int32_t standardCharWidth(int32_t width) { return standardCharWidth_ = width; }
  int32_t standardCharHeight(int32_t height) { return standardCharHeight_ = height; }
  int32_t xMargin(int32_t margin) { return xMargin_ = margin; }
  int32_t yMargin(int32_t margin) { return yMargin_ = margin; }
  ZVDirectionEnum direction(ZVDirectionEnum direction) { return direction_ = direction; }

  int32_t standardCharWidth_ = 6;
  int32_t standardCharHeight_ = 10;
  int32_t xMargin_ = 0;
  int32_t yMargin_ = 0;
  ZVDirectionEnum direction_ = ZV_DIRECTION_RIGHT;
};

#endif
