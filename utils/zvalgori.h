// The base of algorithms: objects that are configured, run and read.
//
// A run is always the same four phases, and begins by emptying, so that one object can run again and again.
// Input is set before a run and output read after it. A subclass overrides the phases, not run.
#ifndef ZV_ZVALGORI_H
#define ZV_ZVALGORI_H

#include "utils/zvobject.h"

class ZV_EXPORT ZVAlgorithm : public ZVObject {
 public:
  ZVAlgorithm() = default;

  // emptyInformation, initialize, algorithmBody and finalize, in this order.
  virtual void run();

  // Forgets what the last run produced.
  virtual void emptyInformation();
  // Prepares for this run.
  virtual void initialize();
  // The work.
  virtual void algorithmBody() = 0;
  // Cleans up.
  virtual void finalize();

  ZV_SHAPE_ABSTRACT_CLOSED(ZVAlgorithm)
};

#endif
