/* Library version. */
#ifndef DAX_VERSION_H
#define DAX_VERSION_H

#include "api.h"

DAX_BEGIN_DECLS

#define DAX_VERSION_MAJOR 0
#define DAX_VERSION_MINOR 1
#define DAX_VERSION_PATCH 0

/* Version of the loaded library as "major.minor.patch". The string lives as long as the process. Thread-safe. */
DAX_API const char* DAX_GetVersion(void);

DAX_END_DECLS

#endif
