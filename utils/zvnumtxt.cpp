#include "utils/zvnumtxt.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "utils/zvascii.h"
#include "utils/zvstrhnd.h"

namespace zvnumber {

namespace {

template <class Number>
int32_t formatWhole(char* buffer, Number value) {
  char* end = std::to_chars(buffer, buffer + INTEGER_ROOM, value).ptr;
  *end = '\0';
  return static_cast<int32_t>(end - buffer);
}

const char* skipBlanks(const char* text) {
  while (zvascii::isSpace(*text)) ++text;
  return text;
}

// Steps over a sign; gives whether it was a minus.
bool skipSign(const char*& text) {
  bool minus = *text == '-';
  if (minus || *text == '+') ++text;
  return minus;
}

// Reads digits, saturating far above 32 bits; null if there are none.
const char* scanDigits(const char* text, int64_t& value) {
  constexpr int64_t LIMIT = int64_t{1} << 40;
  if (!zvascii::isDigit(*text)) return nullptr;
  for (value = 0; zvascii::isDigit(*text); ++text) {
    if (value < LIMIT) value = value * 10 + (*text - '0');
  }
  return text;
}

bool isHexDigit(char c) {
  char upper = zvascii::toUpper(c);
  return zvascii::isDigit(c) || (upper >= 'A' && upper <= 'F');
}

// word is in upper case.
bool startsWith(const char* text, const char* word) {
  while (*word && zvascii::toUpper(*text) == *word) {
    ++text;
    ++word;
  }
  return !*word;
}

// "inf", "infinity", "nan" and "nan(...)" in any case; null for anything else.
const char* scanSpecialReal(const char* text, double& value) {
  if (startsWith(text, "INF")) {
    value = std::numeric_limits<double>::infinity();
    return text + (startsWith(text, "INFINITY") ? 8 : 3);
  }
  if (!startsWith(text, "NAN")) return nullptr;
  value = std::numeric_limits<double>::quiet_NaN();
  text += 3;
  if (*text != '(') return text;
  const char* end = text + 1;
  while (zvascii::isDigit(*end) || *end == '_' ||
         (zvascii::toUpper(*end) >= 'A' && zvascii::toUpper(*end) <= 'Z'))
    ++end;
  return *end == ')' ? end + 1 : text;
}

// The extent of digits, a point and an exponent, and whether the number is above or below 1.
struct Extent {
  const char* end = nullptr;  // null: no number
  bool large = false;
};

// Without a sign, and behind the "0x" of a hexadecimal number. An exponent without digits is no part of the
// number.
Extent extentOfReal(const char* text, bool hexadecimal) {
  auto isMantissaDigit = [hexadecimal](char c) { return hexadecimal ? isHexDigit(c) : zvascii::isDigit(c); };
  int64_t digits = 0;
  int64_t leading = 0;  // digits from the first that is not 0 to the point, negative for zeros behind it
  bool zero = true;
  bool behindPoint = false;
  const char* end = text;
  for (; isMantissaDigit(*end) || (*end == '.' && !behindPoint); ++end) {
    if (*end == '.') {
      behindPoint = true;
      continue;
    }
    ++digits;
    zero = zero && *end == '0';
    if (zero == behindPoint) leading += behindPoint ? -1 : 1;
  }
  if (digits == 0) return {};
  int64_t exponent = 0;
  if (zvascii::toUpper(*end) == (hexadecimal ? 'P' : 'E')) {
    const char* behindSign = end + 1;
    bool minus = skipSign(behindSign);
    const char* behind = scanDigits(behindSign, exponent);
    if (behind) end = behind;
    if (minus) exponent = -exponent;
  }
  return {end, leading * (hexadecimal ? 4 : 1) + exponent > 0};
}

// A conversion of a printf format that takes a double.
struct Conversion {
  bool left = false;   // flag '-'
  bool zeros = false;  // flag '0'
  int width = 0;
  int precision = -1;       // negative: none is given
  char directive[8] = "%";  // what is left to snprintf: the flags "+ #", the precision and the letter
};

// A width or precision; gives false if it is too large.
bool scanFormatNumber(const char*& format, int& value) {
  int64_t number = 0;
  if (const char* behind = scanDigits(format, number)) format = behind;
  value = static_cast<int>(number);
  return number <= 99999;
}

// Reads a conversion behind its percent sign; gives the place behind it, or null if it takes no double.
const char* scanConversion(const char* format, Conversion& conversion) {
  char* end = conversion.directive + 1;
  for (; *format && std::strchr("-0+ #'", *format); ++format) {
    // Groups of thousands are a matter of the locale: there are none.
    if (*format == '-') conversion.left = true;
    if (*format == '0') conversion.zeros = true;
    if (std::strchr("+ #", *format) && !std::strchr(conversion.directive, *format)) *end++ = *format;
  }
  if (!scanFormatNumber(format, conversion.width)) return nullptr;
  if (*format == '.' && !scanFormatNumber(++format, conversion.precision)) return nullptr;
  if (*format == 'l') ++format;
  if (!*format || !std::strchr("aAeEfFgG", *format)) return nullptr;
  *end++ = '.';
  *end++ = '*';
  *end = *format;
  return format + 1;
}

bool isPlainNumberChar(char c) {
  char upper = zvascii::toUpper(c);
  return zvascii::isDigit(c) || (upper >= 'A' && upper <= 'Z') || c == '+' || c == '-' || c == ' ';
}

// What no number has otherwise is the decimal point of the locale. Gives the length of the text.
size_t replacePoint(char* text) {
  char* point = text;
  while (*point && isPlainNumberChar(*point)) ++point;
  if (!*point) return static_cast<size_t>(point - text);
  char* behind = point;
  while (*behind && !isPlainNumberChar(*behind)) ++behind;
  *point = '.';
  size_t rest = std::strlen(behind);
  std::memmove(point + 1, behind, rest + 1);
  return static_cast<size_t>(point + 1 - text) + rest;
}

// Widens the text of length characters to the width asked for.
void padNumber(char* text, size_t length, const Conversion& conversion, bool finite) {
  auto width = static_cast<size_t>(conversion.width);
  if (length >= width) return;
  size_t place = conversion.left ? length : 0;
  bool zeros = conversion.zeros && !conversion.left && finite;
  if (zeros) {
    if (!zvascii::isDigit(text[place])) ++place;
    if (text[place] == '0' && zvascii::toUpper(text[place + 1]) == 'X') place += 2;
  }
  std::memmove(text + place + (width - length), text + place, length - place + 1);
  std::memset(text + place, zeros ? '0' : ' ', width - length);
}

bool appendConversion(ZVStringHandle& text, double value, const Conversion& conversion) {
  const char* directive = conversion.directive;
  int length = std::snprintf(nullptr, 0, directive, conversion.precision, value);
  if (length < 0) return false;
  char* buffer = text.obtainAppendBuffer(std::max(length, conversion.width));
  std::snprintf(buffer, static_cast<size_t>(length) + 1, directive, conversion.precision, value);
  padNumber(buffer, replacePoint(buffer), conversion, std::isfinite(value));
  return true;
}

}  // namespace

int32_t formatInteger(char* buffer, int32_t value) { return formatWhole(buffer, value); }

int32_t formatUnsigned(char* buffer, uint32_t value) { return formatWhole(buffer, value); }

int32_t formatReal(char* buffer, double value, int32_t decimals) {
  char* end = std::to_chars(buffer, buffer + REAL_ROOM - 1, value, std::chars_format::fixed, decimals).ptr;
  *end = '\0';
  return static_cast<int32_t>(end - buffer);
}

int appendReal(ZVStringHandle& text, double value, const char* format) {
  bool converted = false;
  while (*format) {
    if (*format != '%') {
      text.appendChar(*format++);
    } else if (format[1] == '%') {
      text.appendChar('%');
      format += 2;
    } else {
      Conversion conversion;
      format = converted ? nullptr : scanConversion(format + 1, conversion);
      if (!format || !appendConversion(text, value, conversion)) return 0;
      converted = true;
    }
  }
  return 1;
}

const char* scanInteger(const char* text, int32_t& value) {
  text = skipBlanks(text);
  bool minus = skipSign(text);
  int64_t number = 0;
  text = scanDigits(text, number);
  if (!text) return nullptr;
  if (minus) number = -number;
  if (number > INT32_MAX) number = INT32_MAX;
  if (number < INT32_MIN) number = INT32_MIN;
  value = static_cast<int32_t>(number);
  return text;
}

const char* scanUnsigned(const char* text, uint32_t& value) {
  text = skipBlanks(text);
  bool minus = skipSign(text);
  int64_t number = 0;
  text = scanDigits(text, number);
  if (!text) return nullptr;
  bool fits = number <= UINT32_MAX;
  value = !fits ? UINT32_MAX : static_cast<uint32_t>(minus ? -number : number);
  return text;
}

const char* scanReal(const char* text, double& value) {
  text = skipBlanks(text);
  bool minus = skipSign(text);
  double number = 0.0;
  const char* end = scanSpecialReal(text, number);
  if (!end) {
    Extent extent;
    bool hexadecimal = startsWith(text, "0X");
    if (hexadecimal) extent = extentOfReal(text + 2, true);
    if (extent.end) {
      text += 2;
    } else {
      hexadecimal = false;
      extent = extentOfReal(text, false);
    }
    end = extent.end;
    if (!end) return nullptr;
    auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    if (std::from_chars(text, end, number, format).ec == std::errc::result_out_of_range)
      number = extent.large ? HUGE_VAL : 0.0;
  }
  value = minus ? -number : number;
  return end;
}

}  // namespace zvnumber
