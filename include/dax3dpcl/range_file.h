/* The range file: one range image as a sequence of chunks.
 *
 * A chunk is its payload followed by two little-endian 32-bit words: tag and payload size in bytes. A file is read
 * backwards from its end.
 *
 *   tag         payload               meaning
 *   0x617D18DB  2 * width * height    range values, 16-bit, row by row without padding
 *   0xA5A53D03  width * height        validity mask
 *   0xA5A53D0B  16 + pixels           colour: {0, width, height, format} as 32-bit words, then three planes (format
 *                                     0x2180021 or 200) or three bytes a pixel (0x2180014, 201 and all others)
 *   0xA5A53D07  12                    scale, three 32-bit floats
 *   0xA5A53D08  12                    offset, three 32-bit floats
 *   0xA5A53D02  4                     height
 *   0xA5A53D01  4                     width
 *   1           4                     type
 *   2           140 or 280            the 35 calibration values as 32-bit or 64-bit floats
 *
 * Records are explained in dax3dpcl/range_record.h. Thread-safe on distinct records and files. */
#ifndef DAX3DPCL_RANGE_FILE_H
#define DAX3DPCL_RANGE_FILE_H

#include "range_record.h"

DAX_BEGIN_DECLS

/* Writes range values, mask, scale, offset, height and width, in this order, from the memory of owner pointers. Type,
 * colour and calibration are left out. Files are written as by DAX_WriteFile
 * (dax/file.h): a failure leaves the old file unchanged.
 *
 * Scale and offset are written as they are, NaN too: DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4 tells beforehand whether the
 * scale will do.
 *
 * Checks, in order:
 *   path, record, range owner 0, range plane 0 or mask owner 0 null       0x10000014
 *   range format not 3 or mask format not 1                               0x10000007
 *   sides of range and mask differ, or outside 1..32767                   0x10000008
 *   range step or mask step not equal to the width                        0x10000009
 * File not opened -> 0x10000025, not written -> 0x10000027. */
DAX_API DaxStatus DAX3DPCL_UTILS_WRITE_RANGE_V4(const char* path, const DAX3D_RANGE_V4* record);

/* Writes the complete record: range values, mask (for type 0, and for
 * type 1 when mask owner 0 is not null), colour (when colour owner 0 is not null), calibration as 64-bit floats, scale,
 * offset, type, height and width. Scale and offset are written unchecked here too.
 *
 * Checks, in order, those of the mask and of the colour where it is written:
 *   path or record null                                                   0x10000014
 *   type above 1                                                          0x10000007
 *   range owner 0, range plane 0 or (type 0) mask owner 0 null            0x10000014
 *   range format not 3 or mask format not 1                               0x10000007
 *   width or height of range and mask differ, or outside 1..32767         0x10000008
 *   range step or mask step not equal to the width                        0x10000009
 *   colour format neither 200 nor 201                                     0x10000007
 *   200: colour owner 1 or 2 null                                         0x10000014
 *   colour width or height outside 1..32767                               0x10000008
 *   a step of colour other than the width (201: 3 * width)                0x10000009
 * File not opened -> 0x10000025, not written -> 0x10000027. */
DAX_API DaxStatus DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(const char* path, const DAX3D_RANGE_V4* record);

/* Reads a file into a record, which must be zeroed or valid. A FILE SHORT OF MASK OR COLOUR IS READ WITHOUT A SIGN: the
 * pixels beyond a payload are 0 in new memory and unchanged in memory that the record has. Compare the sizes in the
 * file where that matters. So is one whose scale is 0 or NaN: check the record.
 *
 * Memory that the record owns is used as it is and must be large enough for the file: step * height elements of its
 * slot, of two bytes for format 3. Missing memory is allocated and released with ZUR_Free; pages beyond the payload are
 * not committed. Parts of the record without a chunk in the file are unchanged; unknown tags are skipped.
 *
 * Chunks are visited from the end of the file. Of several width or height chunks the first one visited counts, of all
 * others the last one. Width and height must be visited before range values; without pixels there is no memory.
 * Afterwards the range slot has format 3, the sides of the file and a step equal to the width, and so does the mask
 * slot (format 1) when the type is 0; with type 1 a mask of the file is read, but the image of the slot keeps its
 * fields. Interleaved colour may be longer than its image: all of it is read. A file too short for a trailer gives 0
 * and loads nothing.
 *
 *   path or record null                                                   0x10000014
 *   file not opened                                                       0x10000025
 *   not seekable; payload of a wrong size; more data than the record's
 *   memory holds; planes of colour of more than width * height bytes      0x10000000
 *   a side below 0 or above 32767                                         0x10000008
 *   read failed or came up short                                          0x10000026
 *   no memory                                                             0x1000002b
 * The size of range values is checked before the sides. A failed read keeps the parts read so far; a slot never
 * describes more than its memory holds. Release the record in either case (dax3dpcl/range_record.h). */
DAX_API DaxStatus DAX3DPCL_UTILS_READ_RANGE_V4(const char* path, DAX3D_RANGE_V4* record);

DAX_END_DECLS

#endif
