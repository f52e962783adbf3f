// Every public header of the library.
#ifndef ZV_ZVUTILS_H
#define ZV_ZVUTILS_H

#include "utils/zvdlist.h"
#include "utils/zvdlistc.h"
#include "utils/zvdlisti.h"
#include "utils/zvdtuple.h"
#include "utils/zvgeom.h"
#include "utils/zvhelper.h"
#include "utils/zvidxhsh.h"
#include "utils/zvirect.h"
#include "utils/zvobject.h"
#include "utils/zvobjwid.h"
#include "utils/zvomldef.h"
#include "utils/zvomlsta.h"
#include "utils/zvpermil.h"
#include "utils/zvplatfo.h"
#include "utils/zvpoint.h"
#include "utils/zvrect.h"
#include "utils/zvrorect.h"
#include "utils/zvsides.h"
#include "utils/zvsize.h"
#include "utils/zvslist.h"
#include "utils/zvslistc.h"
#include "utils/zvslisti.h"
#include "utils/zvstrhnd.h"
#include "utils/zvstrpoo.h"
#include "utils/zvtransf.h"
#include "utils/zvtuple.h"
#include "utils/zvvalue.h"

#endif
