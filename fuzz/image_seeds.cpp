// A small file of every format that the program reads, and of the ways in which they pack.
#include "fuzz/codec_files.h"

namespace dax::fuzz {

std::vector<Seed> seeds() {
  return {
      as(Bytes().text("P2\n# of text\n3 2\n9\n0 1 2\n3 4 9\n"), "text.pgm"),
      as(Bytes().text("P3 1 2 255 1 2 3\n250 251 252\n"), "text.ppm"),
      as(Bytes().text("P5 3 2 65535\n\0\1\2\3\4\5\6\7\xff\xff\xfe\0"sv), "16-bits.pgm"),
      as(Bytes().text("P6\n2 1\n255\n\1\2\3\xf0\xf1\xf2"), "8-bits.ppm"),

      // A row as it is, and one of differences to the row above.
      as(png(3, 2, 8, 0, "\0\1\x80\xff\2\5\5\5"sv), "grey.png"),
      as(png(2, 1, 16, 2, "\1\1\2\3\4\5\6\xff\xfe\0\1\x80\0"sv), "16-bits.png"),
      as(png(9, 2, 1, 3, "\0\xaa\x80\0\x55\0"sv), "palette.png"),

      as(tiff(false, 3, 2, 16, 1, "\0\1\2\3\4\5\6\7\xff\xff\xfe\0"sv), "16-bits.tif"),
      as(tiff(true, 4, 2, 8, 32773, "\xfd\x70\3\1\2\3\4"sv), "packed.tif"),  // a run, and 4 bytes
      as(tiff(false, 4, 1, 8, 5, "\x80\0\x40\x40\x30\x24\x04"sv), "codes.tif"),

      as(plainBmp(2, 2, 24, 0, "\1\2\3\4\5\6\0\0\xf1\xf2\xf3\xf4\xf5\xf6\0\0"sv), "plain.bmp"),
      as(plainBmp(4, 2, 8, 1, "\3\1\1\0\0\0\0\4\0\1\1\0\0\1"sv), "runs.bmp"),
      as(jpeg(), "grey.jpg"),
  };
}

}  // namespace dax::fuzz
