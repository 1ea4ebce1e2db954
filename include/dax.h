/* The library frame: status codes, records, memory, clocks, the host's thread pool. */
#ifndef DAX_H
#define DAX_H

#include "dax/clock.h"
#include "dax/image.h"
#include "dax/memory.h"
#include "dax/status.h"
#include "dax/threadpool.h"
#include "dax/types.h"
#include "dax/version.h"

#endif
