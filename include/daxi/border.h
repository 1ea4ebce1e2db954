/* What lies outside an image, for operations that take it as a parameter. */
#ifndef DAXI_BORDER_H
#define DAXI_BORDER_H

#include "../dax/api.h"

/* DaxiBorder. Columns and rows of an image a b c, as they go on to the right:
 *
 *   replicate   a b c|c c c c        mirror    a b c|b a b c
 *   symmetric   a b c|c b a a        circular  a b c|a b c a
 *   constant    a value of the caller
 *   in memory   the caller promises that the pixels around the region exist
 *   clip        there are none: windows end at the image, and what they count counts the pixels inside
 *   leave       of geometric operations: pixels of the destination that lie outside the source stay as they are */
enum {
  DAXI_BORDER_REPLICATE = 0,
  DAXI_BORDER_MIRROR = 1,
  DAXI_BORDER_SYMMETRIC = 2,
  DAXI_BORDER_CIRCULAR = 3,
  DAXI_BORDER_CONSTANT = 4,
  DAXI_BORDER_IN_MEMORY = 5,
  DAXI_BORDER_CLIP = 6,
  DAXI_BORDER_LEAVE = 7
};

#endif
