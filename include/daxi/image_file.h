/* Image files: BMP, PGM and PPM, PFM, and raw samples of a given layout, from memory and from files. daxio.h reads and
 * writes PNG, JPEG and TIFF in the same way.
 *
 * First a query tells what a file holds, then the host allocates and the same arguments read it. Samples of a pixel lie
 * side by side, in the order of red, green, blue, alpha; rows follow each other from the top, `step` elements apart.
 *
 *   format  samples                                  channels  in files
 *   BMP     8u                                       1, 3, 4   1, 4, 8, 16, 24 or 32 bits, palettes, masks, run lengths
 *   PNM     8u, 16u                                  1, 3      PGM and PPM, as text and binary, of any largest value
 *   PFM     32f                                      1, 3      either byte order
 *   raw     8u, 16u, 32f                             1..4      either byte order, any start and distance of rows
 *
 * Samples of at most 8 bits are stretched: the largest value of the file becomes 255, halves are rounded up. 16u and 32f
 * have the values of the file, and the record tells the largest that there can be. A palette of greys is one channel.
 *
 * Readers trust nothing. Sides and bytes are compared with the limits before anything else is done with them, and the file must
 * be long enough for its samples. A file that breaks its format is refused, not mended. Nothing is allocated. Thread-safe. */
#ifndef DAXI_IMAGE_FILE_H
#define DAXI_IMAGE_FILE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Formats. */
enum {
  DAXI_IMAGE_ANY = 0, /* reading: what the first bytes say; writing a file: what the ending of its name says */
  DAXI_IMAGE_BMP = 1,
  DAXI_IMAGE_PNM = 2,
  DAXI_IMAGE_PFM = 3,
  DAXI_IMAGE_RAW = 4, /* only where it is asked for */
  DAXI_IMAGE_PNG = 5, /* this and the following: daxio.h */
  DAXI_IMAGE_JPEG = 6,
  DAXI_IMAGE_TIFF = 7
};

/* Types of samples. */
enum { DAXI_SAMPLE_8U = 1, DAXI_SAMPLE_16U = 2, DAXI_SAMPLE_32F = 3 };

/* An image in a file. 48 bytes. */
typedef struct DaxiImageRecord {
  int32_t width;    /* pixels a row */
  int32_t height;   /* rows */
  int32_t channels; /* one: grey, two: grey and alpha, three: colour, four: colour and alpha */
  int32_t type;     /* of the samples in memory, one of those above */
  int32_t bits;     /* of a sample in the file; of a palette, of an index. Written: 0 for those of the type */
  int32_t maxValue; /* the largest value of a sample that the file can hold, as in memory: 255 of 8u, none (0) of 32f.
                          Written: 0 for that of the type */
  int32_t orientation; /* 1 is upright, the others as EXIF numbers them: how rows and columns lie */
  int32_t pages;       /* images in the file */
  int32_t format;      /* of the file, one of the formats above */
  int32_t reserved;    /* 0; not read */
  uint64_t bytes;      /* of the samples, rows without gaps; not read */
} DaxiImageRecord;

/* How to read. Counts begin at 0. 80 bytes. */
typedef struct DaxiImageReadCfg {
  int32_t format;     /* one of the formats above, which the file must have; DAXI_IMAGE_ANY, the default: any */
  int32_t upright;    /* 0 or 1: rows and columns are turned as the orientation says, and so is the record; default 0 */
  int32_t page;       /* of the file, >= 0; default 0 */
  int32_t maxWidth;   /* limits, >= 1; default 1048576 */
  int32_t maxHeight;  /* >= 1; default 1048576 */
  int32_t reserved;   /* not read */
  uint64_t maxPixels; /* default 268435456 */
  uint64_t maxBytes;  /* of the samples; default 4294967296 */
  int32_t rawWidth;   /* the layout of raw files, without effect on others: sides */
  int32_t rawHeight;  /* as a file tells them, compared with the limits */
  int32_t rawChannels;  /* 1..4; default 1 */
  int32_t rawType;      /* 1..3, a type of samples; default 1 */
  int32_t rawBigEndian; /* 0 or 1: the first byte of a sample is its highest; default 0 */
  int32_t reserved2;    /* not read */
  uint64_t rawOffset;   /* bytes before the first sample; default 0 */
  uint64_t rawRowBytes; /* from row to row; without gaps by default, which is 0 */
} DaxiImageReadCfg;

/* How to write. 24 bytes. */
typedef struct DaxiImageWriteCfg {
  int32_t format;      /* one of the formats above; DAXI_IMAGE_ANY, the default, is for files only */
  int32_t quality;     /* JPEG: 1..100; default 95 */
  int32_t level;       /* PNG and deflated TIFF: 0..9, of the compression; default 6 */
  int32_t compression; /* TIFF: 0..2, none, LZW, deflate; default 1 */
  int32_t bigEndian;   /* raw and PFM: 0 or 1 for the highest byte first; default 0 */
  int32_t reserved;    /* not read */
} DaxiImageWriteCfg;

/* Fill in the defaults. cfg null -> 0x10000014. */
DAX_API DaxStatus DAXI_ImageReadDefaultCfg(DaxiImageReadCfg* cfg);
DAX_API DaxStatus DAXI_ImageWriteDefaultCfg(DaxiImageWriteCfg* cfg);

/* What a file in memory holds; no more than its head is read.
 *
 * Checks, in order:
 *   file, cfg or image null                                                                0x10000014
 *   a field of cfg outside its range                                                       0x10000019
 *   no known format, or not the one asked for                                              0x10000007
 *   a variant that is not read: JPEG or PNG within BMP; a page that there is not           0x1000002a
 *   the head is cut short, or the file too short for the samples                           0x10000026
 *   the head breaks the format                                                             0x10000032
 *   a side of 0 or beyond a limit, pixels or bytes beyond a limit                          0x10000008
 * The last four come in the order in which the head tells them. */
DAX_API DaxStatus DAXI_ImageInfoMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                                       DaxiImageRecord* image);

/* The same of a file, path in place of file. Only regular files are opened; else -> 0x10000025. */
DAX_API DaxStatus DAXI_ImageInfoFile(const char* path, const DaxiImageReadCfg* cfg, DaxiImageRecord* image);

/* Reads the samples. image: as the query with the same arguments left it. A failed call may have written some of the
 * pixels.
 *
 * Checks, in order:
 *   file, cfg, image or pixels null                                                        0x10000014
 *   width or height of the image below 1                                                   0x1000001a
 *   type or channels of the image unknown                                                  0x10000019
 *   step below width * channels                                                            0x1000001b
 *   a field of cfg outside its range                                                       0x10000019
 *   no known format, or not the one asked for                                              0x10000007
 *   a variant that is not read, a page that there is not                                   0x1000002a
 *   the head is cut short, or the file too short for the samples                           0x10000026
 *   the head breaks the format                                                             0x10000032
 *   a side of 0 or beyond a limit, pixels or bytes beyond a limit                          0x10000008
 *   the file has other sides, channels or samples than the image                           0x10000008
 *   the samples are cut short                                                              0x10000026
 *   the samples break the format                                                           0x10000032 */
DAX_API DaxStatus DAXI_ImageReadMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                                       const DaxiImageRecord* image, void* pixels, int32_t step);
/* The same of a file, path in place of file. Only regular files are opened; else -> 0x10000025. */
DAX_API DaxStatus DAXI_ImageReadFile(const char* path, const DaxiImageReadCfg* cfg, const DaxiImageRecord* image,
                                     void* pixels, int32_t step);

/* Writes a file into memory. file null: only tells the bytes that are needed. The sides, channels, type, maxValue and bits of
 * the record are read. fileBytes receives the length of the file.
 *
 * Checks, in order:
 *   image, pixels, cfg or fileBytes null                                                   0x10000014
 *   width or height of the image below 1                                                   0x1000001a
 *   type or channels of the image unknown                                                  0x10000019
 *   step below width * channels                                                            0x1000001b
 *   a field of cfg outside its range, or no format                                         0x10000019
 *   a format that does not hold this type, number of channels, bits or maxValue            0x1000002a
 *   more bytes than the format can tell                                                    0x10000008
 *   a sample above maxValue                                                                0x10000032
 *   file not null and capacity below what is needed                                        0x1000001a */
DAX_API DaxStatus DAXI_ImageWriteMemory(const DaxiImageRecord* image, const void* pixels, int32_t step,
                                        const DaxiImageWriteCfg* cfg, void* file, uint64_t capacity,
                                        uint64_t* fileBytes);

/* Writes a file, completely or not at all (DAX_WriteFile). The ending of the name selects the format where cfg does not:
 * .bmp, .pgm, .ppm, .pnm, .pfm, .raw, in small or capital letters.
 *
 * Checks, in order: image, pixels, cfg or path null -> 0x10000014; then as DAXI_ImageWriteMemory, where an ending that is none
 * of these is no format -> 0x10000019; file not opened -> 0x10000025, not written -> 0x10000027, and then errno tells why. */
DAX_API DaxStatus DAXI_ImageWriteFile(const DaxiImageRecord* image, const void* pixels, int32_t step,
                                      const DaxiImageWriteCfg* cfg, const char* path);

DAX_END_DECLS

#endif
