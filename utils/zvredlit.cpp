#include "utils/zvredlit.h"

ZV_DEFINE_NO_COPY(ZVRectDListIter)
