#include "utils/zvptdlit.h"

ZV_DEFINE_NO_COPY(ZVPointDListIter)
