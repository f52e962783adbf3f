// An SVG page under construction: takes items in world coordinates (y upward) and maps them to the page.
#ifndef NETDRAW_NETPAGE_H
#define NETDRAW_NETPAGE_H

#include <string>
#include <vector>

#include "utils/zvpoint.h"
#include "utils/zvrect.h"
#include "utils/zvsize.h"
#include "utils/zvtransf.h"

class SvgPage {
 public:
  // Shows the part of the world in bounds, with the given number of world units to a page pixel.
  SvgPage(const ZVRect& bounds, double unitsPerPixel);

  // Attributes are SVG's own, as in `fill="none" stroke="black"`.
  void ellipse(const ZVPoint& centre, const ZVSize& size, const std::string& attributes);
  void rect(const ZVRect& rect, const std::string& attributes);
  void polygon(const std::vector<ZVPoint>& points, const std::string& attributes);
  void line(const ZVPoint& from, const ZVPoint& to, const std::string& attributes);
  // One line through the points; smooth: the points are those of cubic Bezier curves, 3n + 1 of them.
  void path(const std::vector<ZVPoint>& points, bool smooth, const std::string& attributes);
  // A line of text of exactly that width in letters of that size, centred above the point.
  void text(const ZVPoint& base, int32_t width, int32_t letters, const std::string& text);
  void dot(const ZVPoint& at, const std::string& attributes);

  // The whole page.
  std::string svg() const;

  // As it is spelled in XML.
  static std::string escaped(const std::string& text);

 private:
  std::string x(const ZVPoint& p) const;
  std::string y(const ZVPoint& p) const;
  std::string at(const ZVPoint& p) const;
  std::string length(double world) const;
  void item(const std::string& element, const std::string& attributes);

  ZVTransform transform_;
  double scale_;  // page pixels to a world unit
  double width_;
  double height_;
  std::string items_;
};

#endif
