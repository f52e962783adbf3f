#include "utils/zvdlisti.h"

ZV_DEFINE_NO_COPY(ZVDListIter)
