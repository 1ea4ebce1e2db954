/* The platform layer: the host's image record, aligned memory, memory tables. */
#ifndef ZUR_H
#define ZUR_H

#include "zur/clock.h"
#include "zur/image.h"
#include "zur/memory.h"

#endif
