// Texts in UTF-8, as labels and titles are. A byte that belongs to no character stands for one of Latin-1.
#ifndef NETDRAW_NETUTF8_H
#define NETDRAW_NETUTF8_H

#include <cstddef>
#include <string>

// The bytes of the character that begins there, 0 if none does. U+FFFE and U+FFFF are no characters.
inline size_t utf8Length(const std::string& text, size_t at) {
  auto byte = [&](size_t i) -> unsigned { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0; };
  const unsigned first = byte(at);
  if (first < 0x80) return 1;
  const size_t length = first < 0xc2 ? 0 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : first < 0xf5 ? 4 : 0;
  unsigned code = first & (0x7fU >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xc0) != 0x80) return 0;
    code = code << 6 | (byte(at + i) & 0x3f);
  }
  const bool isSurrogate = code >= 0xd800 && code <= 0xdfff;
  const bool isShort = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  return isSurrogate || isShort || code == 0xfffe || code == 0xffff || code > 0x10ffff ? 0 : length;
}

#endif
