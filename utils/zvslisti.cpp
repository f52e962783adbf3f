#include "utils/zvslisti.h"

ZV_DEFINE_NO_COPY(ZVSListIter)
