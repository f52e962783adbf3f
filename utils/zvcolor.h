// One colour: three channels of 8 bits, a transparency flag, and a flag that says that the colour has changed
// since it was last saved.
//
// Callers may speak bytes (0 to 255) or fractions (0.0 to 1.0); what is stored is the byte. A fraction is
// rounded half up, and outside its range it is clamped.
//
// Invariant: every change sets needsSaving, and only needsSaving(0) clears it. It is no part of the value: no
// copy takes it over, and compare does not look at it.
#ifndef ZV_ZVCOLOR_H
#define ZV_ZVCOLOR_H

#include <cstdint>

#include "utils/zvobject.h"

// The named colours.
enum ZVColorIdentifierEnum : int32_t {
  ZV_COLOR_BLACK = 0,
  ZV_COLOR_BLUE = 1,
  ZV_COLOR_RED = 2,
  ZV_COLOR_GREEN = 3,
  ZV_COLOR_YELLOW = 4,
  ZV_COLOR_MAGENTA = 5,
  ZV_COLOR_CYAN = 6,
  ZV_COLOR_LIGHT_GRAY = 7,
  ZV_COLOR_LIGHT_BLUE = 8,
  ZV_COLOR_LIGHT_RED = 9,
  ZV_COLOR_LIGHT_GREEN = 10,
  ZV_COLOR_LIGHT_YELLOW = 11,
  ZV_COLOR_LIGHT_MAGENTA = 12,
  ZV_COLOR_LIGHT_CYAN = 13,
  ZV_COLOR_GRAY = 14,
  ZV_COLOR_MEDIUM_BLUE = 15,
  ZV_COLOR_MEDIUM_RED = 16,
  ZV_COLOR_MEDIUM_GREEN = 17,
  ZV_COLOR_MEDIUM_YELLOW = 18,
  ZV_COLOR_MEDIUM_MAGENTA = 19,
  ZV_COLOR_MEDIUM_CYAN = 20,
  ZV_COLOR_DARK_GRAY = 21,
  ZV_COLOR_DARK_BLUE = 22,
  ZV_COLOR_DARK_RED = 23,
  ZV_COLOR_DARK_GREEN = 24,
  ZV_COLOR_DARK_YELLOW = 25,
  ZV_COLOR_DARK_MAGENTA = 26,
  ZV_COLOR_DARK_CYAN = 27,
  ZV_COLOR_WHITE = 28
};

class ZV_EXPORT ZVColor : public ZVObject {
 public:
  // Black, opaque, not saved yet.
  ZVColor() = default;

  int ired() const { return ired_; }
  int igreen() const { return igreen_; }
  int iblue() const { return iblue_; }
  double red() const { return fraction(ired_); }
  double green() const { return fraction(igreen_); }
  double blue() const { return fraction(iblue_); }
  // 1.0 minus the fraction.
  double invertRed() const { return 1.0 - red(); }
  double invertGreen() const { return 1.0 - green(); }
  double invertBlue() const { return 1.0 - blue(); }
  // The luma of ITU-R BT.601.
  double gray() const;
  double invertGray() const { return 1.0 - gray(); }
  int transparent() const { return flag(TRANSPARENT_COLOR); }
  int needsSaving() const { return flag(NEEDS_SAVING); }
  // The colour with each channel at 255 minus its byte; it needs saving.
  ZVColor invertColor() const;
  // 1 if the channels and the transparency are equal; 0 for null.
  int compare(const ZVColor* other) const;
  // Writes the fractions of red, green and blue with two decimals ("0.00 0.50 1.00"), for each the smallest
  // that reads back as at least the byte. A byte that none of the 101 levels gives thus reads back as the
  // next one that one gives. Always 0. REQUIRES: text has room for 15 bytes.
  int setStringFromRGB(char* text) const;

  // Keep the low 8 bits and give the channel stored.
  int ired(int value) { return store(ired_, value); }
  int igreen(int value) { return store(igreen_, value); }
  int iblue(int value) { return store(iblue_, value); }
  // Give the fraction stored. Gray sets all three channels.
  double red(double value) { return fraction(store(ired_, channel(value))); }
  double green(double value) { return fraction(store(igreen_, channel(value))); }
  double blue(double value) { return fraction(store(iblue_, channel(value))); }
  double gray(double value);
  void rgb(double red, double green, double blue);
  // A value that names no colour changes nothing.
  void rgb(ZVColorIdentifierEnum id);
  // Takes red, green and blue as fractions from the first three words between blanks, in which what is no
  // number counts as 0, and gives 1. With fewer words, or null, it changes nothing and gives 0.
  int setRGBFromString(const char* text);
  // The setters give the argument.
  int transparent(int on);
  int needsSaving(int on);

  // Bytes that the object occupies.
  virtual int32_t sizeOf() const;

  // A copy changes its target like the setters do.
  ZV_SHAPE_VALUE(ZVColor)

  enum Flag : uint8_t { NEEDS_SAVING = 1, TRANSPARENT_COLOR = 2 };

  static double fraction(int channel) { return channel / 255.0; }
  static int channel(double fraction);

  int store(uint8_t& channel, int value);
  int flag(Flag bit) const { return (flags_ & bit) != 0; }
  void flag(Flag bit, bool on) { flags_ = static_cast<uint8_t>(on ? flags_ | bit : flags_ & ~bit); }

  uint8_t ired_ = 0;
  uint8_t igreen_ = 0;
  uint8_t iblue_ = 0;
  uint8_t flags_ = NEEDS_SAVING;
};

#endif
