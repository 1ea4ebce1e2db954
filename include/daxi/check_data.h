/* The shared check of an image argument.
 *
 * Arguments: the image (for planar layouts an array of plane pointers, all of one step), its row step in elements of
 * the type (a three-channel pixel is three elements), and the size of the region in pixels.
 *
 * Checks, in order:
 *   image null, or for planar layouts the array or one of its planes null   0x10000014
 *   width < 1 or height < 1                                                 0x1000001a
 *   step < width * channels of the layout (C1, P2, P3: 1; C2: 2; C3: 3)     0x1000001b
 *
 * The pixels are not read, of a pointer array exactly the first two (P2R) or three (P3R) elements. Thread-safe. */
#ifndef DAXI_CHECK_DATA_H
#define DAXI_CHECK_DATA_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_CheckData_8u_C1R(const uint8_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_16s_C1R(const int16_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_16u_C1R(const uint16_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32s_C1R(const int32_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32u_C1R(const uint32_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32f_C1R(const float* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_64f_C1R(const double* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32fc_C1R(const DaxComplex32f* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_64fc_C1R(const DaxComplex64f* image, int32_t step, DaxiSize size);

DAX_API DaxStatus DAXI_CheckData_8u_C2R(const uint8_t* image, int32_t step, DaxiSize size);

DAX_API DaxStatus DAXI_CheckData_8u_C3R(const uint8_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_16s_C3R(const int16_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_16u_C3R(const uint16_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32s_C3R(const int32_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32u_C3R(const uint32_t* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32f_C3R(const float* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_64f_C3R(const double* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32fc_C3R(const DaxComplex32f* image, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_64fc_C3R(const DaxComplex64f* image, int32_t step, DaxiSize size);

DAX_API DaxStatus DAXI_CheckData_8u_P2R(const uint8_t* const* planes, int32_t step, DaxiSize size);

DAX_API DaxStatus DAXI_CheckData_8u_P3R(const uint8_t* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_16s_P3R(const int16_t* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_16u_P3R(const uint16_t* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32s_P3R(const int32_t* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32u_P3R(const uint32_t* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32f_P3R(const float* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_64f_P3R(const double* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_32fc_P3R(const DaxComplex32f* const* planes, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_CheckData_64fc_P3R(const DaxComplex64f* const* planes, int32_t step, DaxiSize size);

DAX_END_DECLS

#endif
