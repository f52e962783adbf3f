#include "utils/zvslists.h"

ZV_DEFINE_NO_COPY(ZVSListSort)
