#include "examples/netdraw/netpage.h"

#include <algorithm>
#include <charconv>

#include "examples/netdraw/netfont.h"
#include "examples/netdraw/netutf8.h"

namespace {

// Two decimals, which is finer than a page can show.
std::string number(double value) {
  char text[64];
  auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 2).ptr;
  return {text, end};
}

std::string spelled(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return {c < ' ' ? ' ' : c};  // control characters have no spelling in XML
  }
}

}  // namespace

SvgPage::SvgPage(const ZVRect& bounds, double unitsPerPixel)
    : scale_(1.0 / unitsPerPixel), width_(bounds.width() * scale_), height_(bounds.height() * scale_) {
  transform_.sourceOriginX(bounds.left());
  transform_.sourceOriginY(bounds.top());
  transform_.sourceExtentX(bounds.width());
  transform_.sourceExtentY(bounds.height());
  transform_.targetExtentX(width_);
  transform_.targetExtentY(-height_);
}

std::string SvgPage::x(const ZVPoint& p) const {
  return number(transform_.transformX(static_cast<double>(p.x())));
}

std::string SvgPage::y(const ZVPoint& p) const {
  return number(transform_.transformY(static_cast<double>(p.y())));
}

std::string SvgPage::at(const ZVPoint& p) const { return x(p) + ' ' + y(p); }

std::string SvgPage::length(double world) const { return number(world * scale_); }

void SvgPage::item(const std::string& element, const std::string& attributes) {
  items_ += "  <" + element + ' ' + attributes + "/>\n";
}

void SvgPage::ellipse(const ZVPoint& centre, const ZVSize& size, const std::string& attributes) {
  item("ellipse cx=\"" + x(centre) + "\" cy=\"" + y(centre) + "\" rx=\"" + length(size.width() / 2.0) +
           "\" ry=\"" + length(size.height() / 2.0) + '"',
       attributes);
}

void SvgPage::rect(const ZVRect& rect, const std::string& attributes) {
  item("rect x=\"" + x(ZVPoint(rect.left(), 0)) + "\" y=\"" + y(ZVPoint(0, rect.top())) + "\" width=\"" +
           length(rect.width()) + "\" height=\"" + length(rect.height()) + '"',
       attributes);
}

void SvgPage::polygon(const std::vector<ZVPoint>& points, const std::string& attributes) {
  std::string list;
  for (const ZVPoint& p : points) list += at(p) + ' ';
  item("polygon points=\"" + list + '"', attributes);
}

void SvgPage::line(const ZVPoint& from, const ZVPoint& to, const std::string& attributes) {
  path({from, to}, false, attributes);
}

void SvgPage::path(const std::vector<ZVPoint>& points, bool smooth, const std::string& attributes) {
  std::string commands;
  for (size_t i = 0; i < points.size(); ++i) {
    const bool startsCurve = !smooth || i % 3 == 1;
    commands += i == 0 ? "M " : startsCurve ? (smooth ? "C " : "L ") : "";
    commands += at(points[i]) + ' ';
  }
  item("path d=\"" + commands + '"', "fill=\"none\" " + attributes);
}

void SvgPage::dot(const ZVPoint& at, const std::string& attributes) {
  item("circle cx=\"" + x(at) + "\" cy=\"" + y(at) + "\" r=\"1.6\"", attributes);
}

void SvgPage::text(const ZVPoint& base, int32_t width, int32_t letters, const std::string& text) {
  items_ += "  <text x=\"" + x(base) + "\" y=\"" + y(base) + "\" font-size=\"" + length(letters) +
            "\" textLength=\"" + length(width) + "\" lengthAdjust=\"spacingAndGlyphs\">" + escaped(text) +
            "</text>\n";
}

std::string SvgPage::svg() const {
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(width_) + "\" height=\"" +
         number(height_) + "\" font-family=\"" + NetFont::FAMILY +
         "\" text-anchor=\"middle\">\n"
         "  <rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n" +
         items_ + "</svg>\n";
}

std::string SvgPage::escaped(const std::string& text) {
  std::string result;
  for (size_t i = 0; i < text.size();) {
    const size_t length = utf8Length(text, i);
    if (length == 1) {
      result += spelled(text[i]);
    } else if (length > 1) {
      result.append(text, i, length);
    } else {
      const unsigned byte = static_cast<unsigned char>(text[i]);
      result += static_cast<char>(0xc0 | byte >> 6);
      result += static_cast<char>(0x80 | (byte & 0x3f));
    }
    i += std::max<size_t>(length, 1);
  }
  return result;
}
