/* Files that are written completely or not at all. */
#ifndef DAX_FILE_H
#define DAX_FILE_H

#include "status.h"

DAX_BEGIN_DECLS

/* Writes a file: a new one, or one that replaces a regular file, whose mode it keeps. Whatever happens, a full disk or the
 * end of the process, there is the old file or the whole new one: it is filled without a name in the same folder, which
 * must be writable, flushed to disk and put in place; where the file system cannot do that, under a temporary
 * name and renamed. Links are followed. Other files, devices and pipes, are written directly.
 *
 * Checks, in order: path or data null -> 0x10000014; file not opened -> 0x10000025, not written -> 0x10000027, and then
 * errno tells why. Thread-safe on distinct files. */
DAX_API DaxStatus DAX_WriteFile(const char* path, const void* data, uint64_t bytes);

DAX_END_DECLS

#endif
