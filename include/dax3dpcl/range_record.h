/* The range-image record: what a 3D sensor delivers.
 *
 * A record has a header, three image slots and a calibration block. A slot is a ZurImage, whose plane pointers are
 * the addresses of the pixels, and four owner pointers to the memory that the record owns: normally the same addresses.
 * Pixel (column c, row r) of value v lies at
 *   (c * scale.x + offset.x, r * scale.y + offset.y, v * scale.z + offset.z).
 *
 * Memory that these functions allocate comes from ZUR_Malloc, aligned to 128 bytes. Zero a record before its first use:
 * its pointers are trusted. All functions are thread-safe on distinct records. */
#ifndef DAX3DPCL_RANGE_RECORD_H
#define DAX3DPCL_RANGE_RECORD_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "../zur/image.h"

DAX_BEGIN_DECLS

enum {
  DAX3D_RANGE_WITH_MASK = 0, /* values of the type field */
  DAX3D_RANGE_WITHOUT_MASK = 1,
  DAX3D_MAX_SIDE = 32767 /* maximum width and height of an image in a range file */
};

typedef struct DAX3D_VECTOR_32F {
  float x, y, z;
} DAX3D_VECTOR_32F;

/* One image of the record. */
typedef struct DAX3D_IMAGE_SLOT {
  ZurImage image; /* where the pixels are; steps count elements */
  void* owner[4]; /* memory to be freed */
} DAX3D_IMAGE_SLOT;

/* A pinhole camera: pixel = (fx * X / Z + cx, fy * Y / Z + cy) of the distorted direction. */
typedef struct DAX3D_CAMERA_64F {
  double fx, fy, cx, cy;     /* pixels */
  double k1, k2, p1, p2, k3; /* radial k, tangential p; Brown's model, without unit */
} DAX3D_CAMERA_64F;

/* The 35 calibration values. */
typedef struct DAX3D_RANGE_CALIB {
  DAX3D_CAMERA_64F depth;
  DAX3D_CAMERA_64F rgb;
  double
      depthToRgb[16]; /* 4 x 4, row-major: point in the rgb camera's frame = depthToRgb * point in the depth camera's */
  double reserved;
} DAX3D_RANGE_CALIB;

typedef struct DAX3D_RANGE_V4 {
  uint32_t type;           /* DAX3D_RANGE_WITH_MASK or DAX3D_RANGE_WITHOUT_MASK */
  DAX3D_VECTOR_32F scale;  /* length units per column, per row, per count of a value */
  DAX3D_VECTOR_32F offset; /* length units */
  DAX3D_IMAGE_SLOT mask;   /* format 1: a byte a pixel, 0 = invalid; sides as of the range image */
  DAX3D_IMAGE_SLOT range;  /* format 3: signed 16-bit values */
  DAX3D_IMAGE_SLOT colour; /* format 200: three planes of bytes; 201: three bytes a pixel */
  DAX3D_RANGE_CALIB calib;
} DAX3D_RANGE_V4;

/* Validates a record; the colour slot only when checkColour is 1. The first failure, in this order:
 *   record null                                                       0x10000014
 *   type above 1                                                      0x10000007
 *   range owner 0 or plane 0 null                                     0x10000014
 *   range width < 1 or height < 1                                     0x10000008
 *   range step below half the width (rounded down)                    0x10000009
 *   range format not 3                                                0x10000007
 *   type 0: mask owner 0, then plane 0 null                           0x10000014
 *           mask format not 1                                         0x10000007
 *           mask height, then width not that of range                 0x10000008
 *           mask step below half that width                           0x10000009
 *   |scale.x| or |scale.y| <= FLT_EPSILON, scale.z < FLT_EPSILON      0x10000019
 *   colour: format neither 200 nor 201                                0x10000007
 *           owner 0 or plane 0 null                                   0x10000014
 *           200: owner or plane 1 or 2 null                           0x10000014
 *                step 0 below the width                               0x10000009
 *           201: step 0 below 3 * width                               0x10000009
 *           height < 1 or width < 1                                   0x10000008
 * A step of half the width passes, so the last row of a valid record may have fewer than `width` elements: only
 * step * height elements are known to exist. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(const DAX3D_RANGE_V4* record, int32_t checkColour);

/* Copies a record into memory of its own. The mask is copied when the type is 0, the colour image when the record
 * passes the check with colour and no step of a plane is below the width; slots that are not copied are empty. Steps
 * are kept, padding is unspecified. `copy` must own nothing: its contents are overwritten, not freed. Release it with
 * DAX3DPCL_UTILS_RELEASE_RANGE_V4, and free its colour owners with ZUR_Free.
 *
 * Checks, in order: without colour as DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4; copy null -> 0x10000014; copy equal to
 * record -> 0x10000019. No memory -> 0x1000002b. A failed call leaves the copy untouched. */
DAX_API DaxStatus DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(const DAX3D_RANGE_V4* record, DAX3D_RANGE_V4* copy);

/* Makes a record of type 0 from a depth image and a colour image of an RGB-D camera, in memory of its own: range slot,
 * mask slot (255 where the depth is not 0) and colour slot (format 201) without padding. Steps count elements;
 * `colour` has three bytes a pixel. The header holds the depth camera's viewing directions and the depth unit:
 *   scale = (1 / fx, 1 / fy, depthScale), offset = (-cx / fx, -cy / fy, 0),
 * so that DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins accepts it when cx and cy are positive. Without calibration (null)
 * scale = (1, 1, depthScale) and offset = 0. `record` is overwritten: it must own nothing. Release it as a copy.
 *
 * Checks, in order:
 *   depth, colour or record null                                      0x10000014
 *   a side below 1 or above 32767, of depth, then of colour           0x1000001a
 *   depthStep below the width, colourStep below 3 * width             0x1000001b
 *   depthScale not finite or < FLT_EPSILON                            0x10000019
 *   calib: depth, then rgb as DAX3DPCL_UTILS_Check_CamIntrins         0x10000019
 *          depthToRgb as DAX3DPCL_UTILS_Check_SE3_64f                 0x10000000
 *          1 / fx or 1 / fy of the depth camera <= FLT_EPSILON        0x10000019
 * No memory -> 0x1000002b. A failed call leaves the record untouched. */
DAX_API DaxStatus DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(const int16_t* depth, int32_t depthStep,
                                                               const uint8_t* colour, int32_t colourStep,
                                                               DaxiSize depthSize, DaxiSize colourSize,
                                                               float depthScale, const DAX3D_RANGE_CALIB* calib,
                                                               DAX3D_RANGE_V4* record);

/* Frees the owned memory of range and mask with ZUR_Free and sets owner and plane to null. Null and a second
 * call are ignored; the status is always 0. Colour planes are kept: free their owners with ZUR_Free. */
DAX_API DaxStatus DAX3DPCL_UTILS_RELEASE_RANGE_V4(DAX3D_RANGE_V4* record);

DAX_END_DECLS

#endif
