#include "utils/zvreslit.h"

ZV_DEFINE_NO_COPY(ZVRectSListIter)
