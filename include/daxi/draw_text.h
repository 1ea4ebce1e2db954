/* Text, by strokes of a font of the library's own.
 *
 * The font has ASCII, Latin-1, Greek, and signs of mathematics and technical drawing (diameter, arrows, tolerances of form
 * and position): 380 characters, each a few lines and quarters of ellipses. Capitals are `height` high, small letters three
 * quarters of that; at 8 pixels text can be read. A point of a glyph, u to the right and v up, lies at
 *
 *   x + (u + slant v) cos(angle) + v sin(angle)        y + (u + slant v) sin(angle) - v cos(angle)
 *
 * The first character starts at u = 0, the others where the one before ends, some pairs closer (A and V). Curves stay within
 * 1/16 pixel of themselves. Strokes have round ends and joins, whatever those of the pen. Each pixel is blended once, as by
 * DAXI_DrawPolyline_8u_C1R, with the area that a stroke covers of its square; where several do, with the largest of these areas,
 * not that of their union. Without anti-aliasing pixels of at least half that area are drawn, but strokes up to a pixel wide
 * are Bresenham's lines.
 *
 * The text is `textBytes` bytes of UTF-8, without a zero at its end. U+000A ends a line; the next one starts lineStep heights
 * below. U+000D is passed over. Of bytes that are no UTF-8 (overlong, surrogates, cut off) each longest part that begins like
 * a character counts as one U+FFFD, and so does a character that the font lacks; that sign is a question mark in a diamond.
 *
 * Steps count elements. Thread-safe for distinct images and buffers. The results are the same bits on every machine.
 *
 * Checks of DAXI_DrawText, in order:
 *   dst, text, cfg, stroke or buffer null                          0x10000014
 *   dstSize outside 1..1048576                                     0x1000001a
 *   dstStep below a row                                            0x1000001b
 *   textBytes < 0 or textBytes > 1048576                           0x10000019
 *   x or y outside -2147483648..2147483647                         0x10000019
 *   cfg, then stroke, in the order of their fields                 0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_DRAW_TEXT_H
#define DAXI_DRAW_TEXT_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "stroke.h"

DAX_BEGIN_DECLS

enum { DAXI_TEXT_LEFT = 0, DAXI_TEXT_CENTRE = 1, DAXI_TEXT_RIGHT = 2 };

enum { DAXI_TEXT_BASELINE = 0, DAXI_TEXT_TOP = 1, DAXI_TEXT_MIDDLE = 2, DAXI_TEXT_BOTTOM = 3 };

/* How text is set. Of its baselines the first and the last are meant; the top is that of the first line's capitals, the
 * middle lies between that and the last baseline. 40 bytes. */
typedef struct DaxiTextCfg {
  double height;   /* of capitals, pixels: 1..65536; default 16 */
  double angle;    /* of the baseline, radians, clockwise on the screen: -1e6..1e6; default 0 */
  double slant;    /* to the right, of what is one high: -2..2; default 0; 0.27 is 15 degrees */
  double lineStep; /* from baseline to baseline, in heights: 0..10; default 1.5 */
  int32_t alignX;  /* 0..2: DAXI_TEXT_LEFT, the default, to ..._RIGHT: what of each line lies at (x, y) */
  int32_t alignY;  /* 0..3: DAXI_TEXT_BASELINE, the default, to ..._BOTTOM: what of all lines */
} DaxiTextCfg;

/* What text takes: a box, from (x, y) to the right and down, that holds all ink and every line's baseline from the start of
 * its first character to the end of its last one. Ink leaves it by 1/16 pixel at most, Bresenham's lines by a pixel. 48
 * bytes. */
typedef struct DaxiTextBox {
  double left; /* pixels */
  double top;
  double right;
  double bottom;
  double advance;   /* length of the longest line, pixels along the baseline */
  int32_t lines;    /* at least 1 */
  int32_t replaced; /* characters that are drawn as U+FFFD in place of what is missing or ill-formed */
} DaxiTextBox;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_TextDefaultCfg(DaxiTextCfg* cfg);

/* Draws text. Of the stroke, width is the thickness; 0 stands for a tenth of the height, but at least 1.
 * buffer: at least as many bytes as the query says for the same arguments, aligned as by malloc. */
DAX_API DaxStatus DAXI_DrawText_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const char* text,
                                       int32_t textBytes, double x, double y, const DaxiTextCfg* cfg,
                                       const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawText_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const char* text,
                                       int32_t textBytes, double x, double y, const DaxiTextCfg* cfg,
                                       const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawText_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, const char* text,
                                        int32_t textBytes, double x, double y, const DaxiTextCfg* cfg,
                                        const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawText_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, const char* text,
                                        int32_t textBytes, double x, double y, const DaxiTextCfg* cfg,
                                        const DaxiStroke* stroke, void* buffer);

/* Bytes of work buffer of DAXI_DrawText for the same arguments, of all types and wherever the text is.
 *
 * Checks, in order: text, cfg, stroke or bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; textBytes < 0 or
 * textBytes > 1048576 -> 0x10000019; cfg, then stroke, in the order of their fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DrawTextBufferSize(DaxiSize dstSize, const char* text, int32_t textBytes, const DaxiTextCfg* cfg,
                                          const DaxiStroke* stroke, uint64_t* bytes);

/* What text takes, as DAXI_DrawText sets it by the same arguments. box receives it.
 *
 * Checks, in order: text, cfg, stroke or box null -> 0x10000014; textBytes < 0 or textBytes > 1048576 -> 0x10000019; cfg, then
 * stroke, in the order of their fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_TextSize(const char* text, int32_t textBytes, const DaxiTextCfg* cfg, const DaxiStroke* stroke,
                                DaxiTextBox* box);

DAX_END_DECLS

#endif
