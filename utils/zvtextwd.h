// A text that knows its size in a font, line by line. Lines are numbered from 0.
//
// The font is not owned and must outlive every measurement; without a font every measure is 0.
// Measuring writes to the object (the line last given out, and where the next one begins), never to the text.
// Every change of the text through an operation drops what is known of it; characters that were written in
// place through pString are not seen, and whoever makes or removes a line break there, or cuts the text
// short, sets pCachedLineStart to null.
// Cost: a walk over the lines in order is linear in the length of the text; a step back starts over.
#ifndef ZV_ZVTEXTWD_H
#define ZV_ZVTEXTWD_H

#include "utils/zvfninfo.h"
#include "utils/zvtext.h"

class ZV_EXPORT ZVTextWithDim : public ZVText {
 public:
  ZVTextWithDim(const char* text = nullptr, ZVFontInfo* font = nullptr) : ZVText(text), pFontInfo_(font) {}
  // Copies the text.
  ZVTextWithDim(const ZVText& text, ZVFontInfo* font) : ZVText(text), pFontInfo_(font) {}
  ~ZVTextWithDim() override;

  ZVFontInfo* pFontInfo() const { return pFontInfo_; }
  ZVFontInfo* pFontInfo(ZVFontInfo* font) { return pFontInfo_ = font; }

  // 0 without a text, else one more than there are line breaks.
  int numberOfLines() const;
  // The line without its line break, null if there is none. It stays this object's, until the next line,
  // lineWidth or lineHeight.
  char* line(int index);
  // The extent of the boxes of all characters and the margins; 0 for an empty line.
  int32_t lineWidth(int index);
  int32_t lineHeight(int index);
  // Along the direction of writing the longest line, across it the number of lines times the distance of two.
  int32_t width();
  int32_t height();

  // Where the line of that index begins in the text: -1 and null for none.
  int cachedLineIndex() const { return cacheHolds() ? cachedLineIndex_ : -1; }
  int cachedLineIndex(int index);
  char* pCachedLineStart() const { return cacheHolds() ? pCachedLineStart_ : nullptr; }
  char* pCachedLineStart(char* start);
  // The line last given out. The setter frees nothing; what is set, from new[], is this object's.
  char* pStringBuffer() const { return pStringBuffer_; }
  char* pStringBuffer(char* buffer) { return pStringBuffer_ = buffer; }

  int32_t sizeOf() const override;

  ZV_SHAPE_FULL(ZVTextWithDim)

  bool cacheHolds() const { return cachedRevision_ == textRevision(); }
  void dropStaleCache();
  void dropCache();
  // What both kinds of copy take over beside the text.
  void takeFont(const ZVTextWithDim& other);
  bool isWrittenAlongX() const;
  int32_t longestLine(int32_t (ZVTextWithDim::*extent)(int));
  int32_t allLines(int32_t distance) const { return multiply32(numberOfLines(), distance); }

  ZVFontInfo* pFontInfo_ = nullptr;
  int cachedLineIndex_ = -1;
  char* pCachedLineStart_ = nullptr;
  char* pStringBuffer_ = nullptr;
  uint64_t cachedRevision_ = 0;  // of the text that the cache belongs to
};

#endif
