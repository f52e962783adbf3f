// The skeleton of a plane sweep: walks segments in the order of one coordinate, keeps those open at the
// current coordinate in a balanced tree ordered across it (the sweep line), and calls two actions, at the
// start and at the end of each segment. A derived class says where segments lie and does its work in the
// actions, where it can ask the sweep line for the neighbours of the current segment.
//
// Segments are any objects. Each has one cell in the start list and one in the end list; the sweep owns these
// cells and the sweep line, never the segments. A run uses both lists up.
//
// Events come in this order:
//  1. At one coordinate all starts come before any end, so segments that touch are open together.
//  2. Starts at one coordinate, and ends at one coordinate, come in the order of the input list.
//  3. A segment lies in the sweep line during both of its actions.
//
// REQUIRES of both lists: they hold the same segments; no segment ends before it starts; coordinates stay
// what they are until the segment has ended. They may be any 32-bit numbers: the largest one also stands for
// a list that is used up, but a list that is used up has no event.
//
// Cost: two sorts, and for each segment one insertion and one search and removal in the sweep line, both
// logarithmic in the number of open segments.
#ifndef ZV_ZVSWEEP_H
#define ZV_ZVSWEEP_H

#include <memory>

#include "utils/zvalgori.h"
#include "utils/zvdlists.h"
#include "utils/zvssbtre.h"

// What a sweep is for; its values beyond the default belong to the derived classes.
enum ZVSweepTypeEnum : int32_t { ZV_SWEEP_DEFAULT = 0 };

class ZV_EXPORT ZVSweep : public ZVAlgorithm {
 public:
  // Starts with cells of its own around the segments of the list.
  ZVSweep(const ZVDList* segments = nullptr, ZVSweepTypeEnum type = ZV_SWEEP_DEFAULT);

  ZVSweepTypeEnum sweepType() const { return type_; }

  // May be filled before a run; a second run finds them empty otherwise.
  ZVDList* pStartSegmentList() { return &startSegments_; }
  const ZVDList* pStartSegmentList() const { return &startSegments_; }
  ZVDList* pEndSegmentList() { return &endSegments_; }
  const ZVDList* pEndSegmentList() const { return &endSegments_; }
  // The segments open now; null before the first run.
  ZVSegSortedBinTree* pSweepLine() const { return sweepLine_.get(); }

  // Makes a new, empty sweep line.
  void initialize() override;
  // The walk. REQUIRES: initialize has run.
  void algorithmBody() override;

 protected:
  // Along the direction of the sweep.
  virtual int32_t startCoordinateOfSegment(const ZVObject* segment) = 0;
  virtual int32_t endCoordinateOfSegment(const ZVObject* segment) = 0;
  // Across it; the start orders the sweep line, the end is not used here.
  virtual int32_t otherStartCoordinateOfSegment(const ZVObject* segment);
  virtual int32_t otherEndCoordinateOfSegment(const ZVObject* segment);

  virtual void actOnStartOfSegment(ZVObject* segment);
  virtual void actOnEndOfSegment(ZVObject* segment);

  ZV_SHAPE_NO_COPY(ZVSweep)
  // Those who order segments.
  friend class ZVSegSortedBinTree;
  friend class ZVSweepSegmentSort;

  void startFirstSegment();
  void endFirstSegment();

  ZVSweepTypeEnum type_;
  ZVDList startSegments_;  // not yet started
  ZVDList endSegments_;    // not yet ended
  std::unique_ptr<ZVSegSortedBinTree> sweepLine_;
};

// Sorts the segments of a sweep by their starts or ends. REQUIRES: the sweep is set, and outlives the sort.
class ZV_EXPORT ZVSweepSegmentSort : public ZVDListSort {
 public:
  ZVSweepSegmentSort(ZVSweep* sweep = nullptr, ZVSegmentSortTypeEnum type = ZV_SEGMENT_SORT_START)
      : sweep_(sweep), type_(type) {}

  // Gives the type set. With any value but the two named ones all segments tie.
  ZVSegmentSortTypeEnum segmentSortType(ZVSegmentSortTypeEnum type) { return type_ = type; }

 protected:
  int32_t virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) override;
  void virtualDebugOutputElement(ZVDListCell*) override {}

  ZV_SHAPE_NO_COPY(ZVSweepSegmentSort)
  ZVSegmentSortTypeEnum segmentSortType() const { return type_; }
  ZVSweep* pSweep() const { return sweep_; }
  int32_t coordinate(const ZVDListCell* cell) const;

  ZVSweep* sweep_;
  ZVSegmentSortTypeEnum type_;
};

#endif
