/* Numbers that functions on colour and on what cameras send take. */
#ifndef DAXI_COLOUR_H
#define DAXI_COLOUR_H

#include "../dax/api.h"

/* DaxiColourStandard: the weights of red and blue in grey and in the Y of YCbCr; green has the rest.
 * BT.601: 0.299 and 0.114; BT.709: 0.2126 and 0.0722. */
enum { DAXI_COLOUR_BT601 = 0, DAXI_COLOUR_BT709 = 1 };

/* DaxiColourRange: of YCbCr. Video: of eight bits Y is 16..235, Cb and Cr 16..240; full: all of them 0..255. */
enum { DAXI_COLOUR_VIDEO = 0, DAXI_COLOUR_FULL = 1 };

#endif
