#include "utils/zvptslit.h"

ZV_DEFINE_NO_COPY(ZVPointSListIter)
