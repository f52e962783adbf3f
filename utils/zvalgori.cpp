#include "utils/zvalgori.h"

ZV_DEFINE_ABSTRACT(ZVAlgorithm, ZVObject)

void ZVAlgorithm::run() {
  emptyInformation();
  initialize();
  algorithmBody();
  finalize();
}

void ZVAlgorithm::emptyInformation() {}

void ZVAlgorithm::initialize() {}

void ZVAlgorithm::finalize() {}

void ZVAlgorithm::init() {}

void ZVAlgorithm::ZVAlgorithmdeepCopy(const ZVAlgorithm& other) { ZVObject::copyObject(&other); }

void ZVAlgorithm::ZVAlgorithmattributeCopy(const ZVAlgorithm& other) { ZVObject::copyAttributes(&other); }
