#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <vector>

#include "utils/zvsweep.h"

namespace {

struct Segment : ZVObject {
  Segment(int32_t itsStart, int32_t itsEnd, int32_t itsAcross = 0)
      : start(itsStart), end(itsEnd), across(itsAcross) {}
  int32_t start, end, across;
};
const Segment* segmentOf(const ZVObject* object) { return static_cast<const Segment*>(object); }

struct Lower {
  bool operator()(const Segment* a, const Segment* b) const {
    return a->across != b->across ? a->across < b->across : std::less<>()(a, b);
  }
};
using Open = std::set<const Segment*, Lower>;

struct Event {
  bool start;
  const Segment* segment;
  bool operator==(const Event&) const = default;
};

// Notes its events, and at each of them compares the sweep line with a set of what is open.
class NotingSweep : public ZVSweep {
 public:
  using ZVSweep::ZVSweep;
  std::vector<Event> takeEvents() { return std::exchange(events, {}); }

 protected:
  int32_t startCoordinateOfSegment(const ZVObject* segment) override { return segmentOf(segment)->start; }
  int32_t endCoordinateOfSegment(const ZVObject* segment) override { return segmentOf(segment)->end; }
  int32_t otherStartCoordinateOfSegment(const ZVObject* segment) override {
    return segmentOf(segment)->across;
  }
  void actOnStartOfSegment(ZVObject* segment) override {
    events.push_back({true, segmentOf(segment)});
    open.insert(segmentOf(segment));
    look(segment);
  }
  void actOnEndOfSegment(ZVObject* segment) override {
    events.push_back({false, segmentOf(segment)});
    look(segment);
    open.erase(segmentOf(segment));
  }

 private:
  void look(ZVObject* segment) {
    auto place = open.find(segmentOf(segment));
    EXPECT_EQ(pSweepLine()->pPreceedingSegment(segment), place == open.begin() ? nullptr : *std::prev(place));
    EXPECT_EQ(pSweepLine()->pSucceedingSegment(segment),
              std::next(place) == open.end() ? nullptr : *std::next(place));
    EXPECT_EQ(pSweepLine()->length(), static_cast<int32_t>(open.size()));
  }

  std::vector<Event> events;
  Open open;
};

// All starts and ends by their coordinate, starts first, else in the order of the input.
std::vector<Event> eventsOf(const std::vector<Segment*>& segments) {
  std::vector<Event> events;
  for (bool start : {true, false}) {
    for (const Segment* segment : segments) events.push_back({start, segment});
  }
  auto coordinate = [](const Event& e) { return e.start ? e.segment->start : e.segment->end; };
  std::stable_sort(events.begin(), events.end(),
                   [&](const Event& a, const Event& b) { return coordinate(a) < coordinate(b); });
  return events;
}

TEST(Sweep, MeetsAllEventsInOrderWithTheirNeighbours) {
  std::mt19937 random(47);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(testing::Message() << "seed 47, round " << round);
    const auto spread = static_cast<int32_t>(2 + random() % 200);
    auto below = [&](int32_t limit) { return static_cast<int32_t>(random() % static_cast<unsigned>(limit)); };
    std::vector<std::unique_ptr<Segment>> owned;
    std::vector<Segment*> segments;
    ZVDList list;
    for (int32_t n = round / 3; n > 0; --n) {
      int32_t start = below(spread) - spread / 2;
      int32_t end = start + below(1 + spread / 3);
      // Some reach as far as numbers go, or begin there.
      if (round % 2 && below(3) == 0) end = INT32_MAX;
      if (end == INT32_MAX && below(3) == 0) start = INT32_MAX;
      owned.push_back(std::make_unique<Segment>(start, end, below(spread)));
      segments.push_back(owned.back().get());
    }
    std::shuffle(segments.begin(), segments.end(), random);
    for (Segment* segment : segments) list.appendObject(segment);

    NotingSweep sweep(&list);
    ASSERT_EQ(sweep.pStartSegmentList()->compare(&list), 1);
    ASSERT_EQ(sweep.pEndSegmentList()->compare(&list), 1);
    for (int run = 0; run < 2; ++run) {
      sweep.run();
      ASSERT_EQ(sweep.takeEvents(), eventsOf(segments));
      ASSERT_EQ(sweep.pStartSegmentList()->length() + sweep.pEndSegmentList()->length(), 0);
      ASSERT_EQ(sweep.pSweepLine()->length(), 0);
      // The lists are used up until they are filled again.
      sweep.run();
      ASSERT_EQ(sweep.takeEvents(), std::vector<Event>());
      sweep.pStartSegmentList()->copyAppendList(&list);
      sweep.pEndSegmentList()->copyAppendList(&list);
    }
    // The input is not touched.
    ASSERT_EQ(list.length(), static_cast<int32_t>(segments.size()));
    for (size_t i = 0; i < segments.size(); ++i) {
      ASSERT_EQ(list.pObjectInPosition(static_cast<int32_t>(i) + 1), segments[i]);
    }
  }
}

TEST(Sweep, OfNothingActsOnNothing) {
  NotingSweep sweep(nullptr, static_cast<ZVSweepTypeEnum>(7));
  EXPECT_EQ(sweep.sweepType(), 7);
  EXPECT_EQ(sweep.pSweepLine(), nullptr);
  sweep.run();
  EXPECT_EQ(sweep.takeEvents(), std::vector<Event>());
  EXPECT_NE(sweep.pSweepLine(), nullptr);
  EXPECT_EQ(NotingSweep().sweepType(), ZV_SWEEP_DEFAULT);
}

// A contract broken in a way that does no harm: what ends before it starts stays open.
TEST(Sweep, SurvivesASegmentThatEndsBeforeItStarts) {
  struct Quiet : NotingSweep {
    using NotingSweep::NotingSweep;
    void actOnStartOfSegment(ZVObject*) override { ++starts; }
    void actOnEndOfSegment(ZVObject*) override { ++ends; }
    int starts = 0, ends = 0;
  };
  Segment backward(5, 3), late(6, 9);
  ZVDList list;
  list.appendObject(&backward);
  list.appendObject(&late);
  Quiet sweep(&list);
  sweep.run();
  EXPECT_EQ(sweep.starts, 2);
  EXPECT_EQ(sweep.ends, 2);
  ASSERT_EQ(sweep.pSweepLine()->length(), 1);
  EXPECT_EQ(sweep.pSweepLine()->pFirstCell()->pObject(), &backward);
}

TEST(SweepSegmentSort, LeavesTheOrderAloneForAnyOtherCoordinate) {
  Segment segments[] = {{3, 4}, {1, 9}, {3, 3}};
  ZVDList list;
  for (Segment& segment : segments) list.appendObject(&segment);
  NotingSweep sweep;
  ZVSweepSegmentSort sort(&sweep);
  EXPECT_EQ(sort.segmentSortType(static_cast<ZVSegmentSortTypeEnum>(2)), 2);
  sort.quickSort(&list, 0);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(list.pObjectInPosition(i + 1), &segments[i]);
}

}  // namespace
