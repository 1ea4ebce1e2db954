#include "dax/version.h"

#define DAX_TEXT_(x) #x
#define DAX_TEXT(x) DAX_TEXT_(x)
const char* DAX_GetVersion() {
  return DAX_TEXT(DAX_VERSION_MAJOR) "." DAX_TEXT(DAX_VERSION_MINOR) "." DAX_TEXT(DAX_VERSION_PATCH);
}
#undef DAX_TEXT
#undef DAX_TEXT_
