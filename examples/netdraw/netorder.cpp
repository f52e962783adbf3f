#include "examples/netdraw/netorder.h"

#include <tuple>

int32_t ReadingOrder::virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const {
  auto place = [](const ZVObject* object) {
    const auto* node = static_cast<const NetNode*>(object);
    const ZVRect rect = node->rect();
    return std::tuple(-int64_t{rect.top()}, rect.left(), node->number());
  };
  return place(object1) < place(object2) ? -1 : 1;
}
