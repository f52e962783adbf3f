#include "utils/zvshredb.h"

ZV_DEFINE_NO_COPY(ZVShapeResourceDB)
