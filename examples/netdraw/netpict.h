// The picture of a drawing.
#ifndef NETDRAW_NETPICT_H
#define NETDRAW_NETPICT_H

#include <string>

#include "examples/netdraw/netmodel.h"
#include "examples/netdraw/netpage.h"
#include "utils/zvpolygo.h"
#include "utils/zvshape.h"

class Picture {
 public:
  // Whether the numbers of a picture reach to all of the drawing, which takes some four miles.
  static bool canShow(const NetGraph& graph);

  // REQUIRES: the drawing can be shown.
  // With regions, the picture also shows where labels could go: the text rectangles of the nodes, and the
  // grids in which the labels of polygonal nodes are placed.
  Picture(const NetGraph& graph, bool regions);

  std::string svg() const { return page_.svg(); }
  // Ends of edges that lie on the outlines of their nodes, of all ends.
  int endsOnOutline() const { return endsOnOutline_; }
  int ends() const { return ends_; }
  // Labels that found a place inside their node, of all labels.
  int labelsInside() const { return labelsInside_; }
  int labels() const { return labels_; }

 private:
  void drawEdge(const NetEdge& edge);
  void drawNode(const NetNode& node);
  // Height is that of the label, 0 without a grid.
  void drawRegions(const NetNode& node, int32_t height);
  ZVPoint endOnOutline(const NetNode& node, const ZVPoint& last, const ZVPoint& before);

  SvgPage page_;
  bool regions_;
  int ends_ = 0;
  int endsOnOutline_ = 0;
  int labels_ = 0;
  int labelsInside_ = 0;
};

// The outline of a shape.
void drawOutline(SvgPage& page, const ZVShape& shape, const ZVPoint& centre, const ZVSize& size,
                 const std::string& attributes);

// The intervals of the grid in which labels of that height are placed.
void drawGrid(SvgPage& page, const ZVPolygon& polygon, int32_t height, ZVLabelLocationEnum location);

#endif
