#include "utils/zvsweep.h"

ZV_DEFINE_NO_COPY(ZVSweep)
ZV_DEFINE_NO_COPY(ZVSweepSegmentSort)

namespace {

// Where a list that is used up would go on.
constexpr int32_t BEYOND_ALL = 0x7FFFFFFF;

}  // namespace

ZVSweep::ZVSweep(const ZVDList* segments, ZVSweepTypeEnum type) : type_(type) {
  startSegments_.copyAppendList(segments);
  endSegments_.copyAppendList(segments);
}

void ZVSweep::initialize() { sweepLine_ = std::make_unique<ZVSegSortedBinTree>(this); }

void ZVSweep::algorithmBody() {
  ZVSweepSegmentSort sort(this);
  sort.quickSort(&startSegments_, 0);
  sort.segmentSortType(ZV_SEGMENT_SORT_END);
  sort.quickSort(&endSegments_, 0);

  int32_t starts = startSegments_.length();
  int32_t ends = endSegments_.length();
  while (starts > 0 || ends > 0) {
    int32_t s = starts > 0 ? startCoordinateOfSegment(startSegments_.pFirstCell()->pObject()) : BEYOND_ALL;
    int32_t e = ends > 0 ? endCoordinateOfSegment(endSegments_.pFirstCell()->pObject()) : BEYOND_ALL;
    if (s > e || starts == 0) {
      endFirstSegment();
      --ends;
    } else {
      startFirstSegment();
      --starts;
    }
  }
}

void ZVSweep::startFirstSegment() {
  ZVDListCell* cell = startSegments_.pFirstCell();
  ZVObject* segment = cell->pObject();
  sweepLine_->addObject(segment);
  startSegments_.discardCell(cell);
  actOnStartOfSegment(segment);
}

void ZVSweep::endFirstSegment() {
  ZVDListCell* cell = endSegments_.pFirstCell();
  ZVObject* segment = cell->pObject();
  actOnEndOfSegment(segment);
  delete sweepLine_->searchAndRemoveObject(segment);
  endSegments_.discardCell(cell);
}

int32_t ZVSweep::otherStartCoordinateOfSegment(const ZVObject*) { return 0; }

int32_t ZVSweep::otherEndCoordinateOfSegment(const ZVObject*) { return 0; }

void ZVSweep::actOnStartOfSegment(ZVObject*) {}

void ZVSweep::actOnEndOfSegment(ZVObject*) {}

int32_t ZVSweepSegmentSort::virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) {
  int32_t a = coordinate(cell1);
  int32_t b = coordinate(cell2);
  return (a > b) - (a < b);
}

int32_t ZVSweepSegmentSort::coordinate(const ZVDListCell* cell) const {
  switch (segmentSortType()) {
    case ZV_SEGMENT_SORT_START:
      return pSweep()->startCoordinateOfSegment(cell->pObject());
    case ZV_SEGMENT_SORT_END:
      return pSweep()->endCoordinateOfSegment(cell->pObject());
    default:
      return 0;
  }
}
