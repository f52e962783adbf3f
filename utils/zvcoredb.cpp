#include "utils/zvcoredb.h"

ZV_DEFINE_NO_COPY(ZVColorResourceDB)
