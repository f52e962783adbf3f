#include "utils/zvtextwd.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace {

// The metrics of a font along one axis.
struct Metrics {
  int32_t (ZVFontInfo::*bearing)(char);
  int32_t (ZVFontInfo::*extent)(char);
  int32_t (ZVFontInfo::*spacing)(char);
  int32_t (ZVFontInfo::*margin)() const;
};

constexpr Metrics ALONG_X = {&ZVFontInfo::xBearing, &ZVFontInfo::charWidth, &ZVFontInfo::xSpacing,
                             &ZVFontInfo::xMargin};
constexpr Metrics ALONG_Y = {&ZVFontInfo::yBearing, &ZVFontInfo::charHeight, &ZVFontInfo::ySpacing,
                             &ZVFontInfo::yMargin};

// The extent of all boxes of a line and its margins. In 64 bits nothing of it can overflow.
int32_t extentOf(const char* line, ZVFontInfo* font, const Metrics& metrics) {
  if (!line || !font || !*line) return 0;
  int64_t first = std::numeric_limits<int64_t>::max();
  int64_t last = std::numeric_limits<int64_t>::min();
  int64_t pen = 0;
  for (; *line; ++line) {
    const int64_t start = pen + (font->*metrics.bearing)(*line);
    first = std::min(first, start);
    last = std::max(last, start + (font->*metrics.extent)(*line));
    pen += (font->*metrics.spacing)(*line);
  }
  return static_cast<int32_t>(last - first + int64_t{2} * (font->*metrics.margin)());
}

}  // namespace

ZV_DEFINE_FULL(ZVTextWithDim, ZVText)

ZVTextWithDim::~ZVTextWithDim() { delete[] pStringBuffer_; }

void ZVTextWithDim::init() {
  pFontInfo_ = nullptr;
  dropCache();
  pStringBuffer_ = nullptr;
}

void ZVTextWithDim::ZVTextWithDimdeepCopy(const ZVTextWithDim& other) {
  ZVText::copyObject(&other);
  takeFont(other);
}

void ZVTextWithDim::ZVTextWithDimattributeCopy(const ZVTextWithDim& other) {
  ZVText::copyAttributes(&other);
  takeFont(other);
}

void ZVTextWithDim::takeFont(const ZVTextWithDim& other) {
  delete[] std::exchange(pStringBuffer_, nullptr);
  dropCache();
  pFontInfo_ = other.pFontInfo_;
}

void ZVTextWithDim::dropCache() {
  cachedLineIndex_ = -1;
  pCachedLineStart_ = nullptr;
  cachedRevision_ = textRevision();
}

void ZVTextWithDim::dropStaleCache() {
  if (!cacheHolds()) dropCache();
}

int ZVTextWithDim::cachedLineIndex(int index) {
  dropStaleCache();
  return cachedLineIndex_ = index;
}

char* ZVTextWithDim::pCachedLineStart(char* start) {
  dropStaleCache();
  return pCachedLineStart_ = start;
}

int ZVTextWithDim::numberOfLines() const {
  const char* text = pString();
  if (!text) return 0;
  return 1 + static_cast<int>(std::count(text, text + std::strlen(text), '\n'));
}

char* ZVTextWithDim::line(int index) {
  dropStaleCache();
  if (!pString() || index < 0) return nullptr;
  const bool ahead = pCachedLineStart_ && index >= cachedLineIndex_;
  char* start = ahead ? pCachedLineStart_ : pString();
  for (int64_t count = index - (ahead ? int64_t{cachedLineIndex_} : 0); count > 0; --count) {
    start = std::strchr(start, '\n');
    if (!start) return nullptr;
    ++start;
  }

  const size_t length = std::strcspn(start, "\n");
  auto* buffer = new char[length + 1];
  std::memcpy(buffer, start, length);
  buffer[length] = '\0';
  if (start[length]) {
    cachedLineIndex_ = add32(index, 1);
    pCachedLineStart_ = start + length + 1;
  }
  delete[] std::exchange(pStringBuffer_, buffer);
  return pStringBuffer_;
}

int32_t ZVTextWithDim::lineWidth(int index) { return extentOf(line(index), pFontInfo_, ALONG_X); }

int32_t ZVTextWithDim::lineHeight(int index) { return extentOf(line(index), pFontInfo_, ALONG_Y); }

bool ZVTextWithDim::isWrittenAlongX() const {
  return pFontInfo_->direction() == ZV_DIRECTION_RIGHT || pFontInfo_->direction() == ZV_DIRECTION_LEFT;
}

int32_t ZVTextWithDim::longestLine(int32_t (ZVTextWithDim::*extent)(int)) {
  int32_t longest = (this->*extent)(0);
  for (int i = 1, count = numberOfLines(); i < count; ++i) longest = std::max(longest, (this->*extent)(i));
  return longest;
}

int32_t ZVTextWithDim::width() {
  if (!pFontInfo_) return 0;
  return isWrittenAlongX() ? longestLine(&ZVTextWithDim::lineWidth) : allLines(pFontInfo_->xSpacing('\n'));
}

int32_t ZVTextWithDim::height() {
  if (!pFontInfo_) return 0;
  return isWrittenAlongX() ? allLines(pFontInfo_->ySpacing('\n')) : longestLine(&ZVTextWithDim::lineHeight);
}

int32_t ZVTextWithDim::sizeOf() const {
  return ZVText::sizeOf() + static_cast<int32_t>(sizeof *this - sizeof(ZVText));
}
