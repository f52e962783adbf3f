#include "utils/zvfninfo.h"

namespace {

// What lies between two lines of the raster.
constexpr int32_t LINE_GAP = 2;

}  // namespace

ZV_DEFINE_VALUE(ZVFontInfo, ZVObject)

ZVFontInfo::ZVFontInfo(int32_t width, int32_t height, int32_t xMargin, int32_t yMargin,
                       ZVDirectionEnum direction)
    : standardCharWidth_(width),
      standardCharHeight_(height),
      xMargin_(xMargin),
      yMargin_(yMargin),
      direction_(direction) {}

void ZVFontInfo::init() { ZVFontInfoattributeCopy(ZVFontInfo()); }

void ZVFontInfo::ZVFontInfoattributeCopy(const ZVFontInfo& other) {
  ZVObject::copyAttributes(&other);
  standardCharWidth(other.standardCharWidth());
  standardCharHeight(other.standardCharHeight());
  xMargin(other.xMargin());
  yMargin(other.yMargin());
  direction(other.direction());
}

int32_t ZVFontInfo::charWidth(char c) { return c == '\n' ? 0 : standardCharWidth(); }

int32_t ZVFontInfo::charHeight(char c) { return c == '\n' ? 0 : standardCharHeight(); }

int32_t ZVFontInfo::xBearing(char) { return 0; }

int32_t ZVFontInfo::yBearing(char) { return 0; }

int32_t ZVFontInfo::xSpacing(char c) { return c == '\n' ? 0 : standardCharWidth(); }

int32_t ZVFontInfo::ySpacing(char c) { return c == '\n' ? add32(standardCharHeight(), LINE_GAP) : 0; }
