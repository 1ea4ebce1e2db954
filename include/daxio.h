/* Image files of all formats: PNG, JPEG and TIFF through their codecs, the others by the library (daxi/image_file.h), whose
 * records, limits and order of samples these are.
 *
 *   format  samples       channels  in files
 *   PNG     8u, 16u       1..4      1, 2, 4, 8 or 16 bits, palettes, transparency as alpha, interlaced or not
 *   JPEG    8u            1, 3      baseline and progressive, at most 100 scans; CMYK becomes red, green, blue
 *   TIFF    8u, 16u, 32f  1..4      strips and tiles of 1..16 bits or 32f, planes, palettes, either sense of grey, every
 *                                   compression of libtiff; what else libtiff makes colours of, as 8u
 *
 * Samples of 9..15 bits have the values of the file and a maxValue of 2^bits - 1. Orientations are those of EXIF, and of TIFF's own
 * tag. PNG is written with 1, 2 or 4 bits where the record says so, of 8u and one channel: the nearest of the values there are;
 * JPEG from 8u of 1 or 3 channels; TIFF with the orientation of the record. A file is read into memory as a whole: at most 2^32 bytes,
 * else -> 0x10000008. Codecs allocate what they need once the limits hold; else -> 0x1000002b.
 *
 * Link libdaxio with libdax. Thread-safe. */
#ifndef DAXIO_H
#define DAXIO_H

#include "daxi/image_file.h"

DAX_BEGIN_DECLS

/* What a codec says about a failure; empty where it says nothing. */
typedef struct DaxioMessage {
  char text[200];
} DaxioMessage;

/* As the functions of the library with these arguments; message may be null. A variant that no codec reads ->
 * 0x1000002a; samples with a sign, of other floats or of more than 16 bits -> 0x10000007. A file in which something is
 * missing or damaged is refused, even where a codec would fill it up. */
DAX_API DaxStatus DAXIO_ImageInfoMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                                        DaxiImageRecord* image, DaxioMessage* message);
DAX_API DaxStatus DAXIO_ImageInfoFile(const char* path, const DaxiImageReadCfg* cfg, DaxiImageRecord* image,
                                      DaxioMessage* message);
DAX_API DaxStatus DAXIO_ImageReadMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                                        const DaxiImageRecord* image, void* pixels, int32_t step,
                                        DaxioMessage* message);
DAX_API DaxStatus DAXIO_ImageReadFile(const char* path, const DaxiImageReadCfg* cfg, const DaxiImageRecord* image,
                                      void* pixels, int32_t step, DaxioMessage* message);

/* Compressed files are encoded for the query of their bytes too. */
DAX_API DaxStatus DAXIO_ImageWriteMemory(const DaxiImageRecord* image, const void* pixels, int32_t step,
                                         const DaxiImageWriteCfg* cfg, void* file, uint64_t capacity,
                                         uint64_t* fileBytes, DaxioMessage* message);
/* Endings are .png, .jpg, .jpeg, .tif, .tiff and those of the library. */
DAX_API DaxStatus DAXIO_ImageWriteFile(const DaxiImageRecord* image, const void* pixels, int32_t step,
                                       const DaxiImageWriteCfg* cfg, const char* path, DaxioMessage* message);

DAX_END_DECLS

#endif
