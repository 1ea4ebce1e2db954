// Of what readers must refuse or take with care, a file each.
#include "fuzz/codec_files.h"

namespace dax::fuzz {
namespace {

// An EXIF segment with one entry.
Bytes exif(uint32_t directory, uint32_t orientation) {
  Bytes block, segment;
  block.text("Exif\0\0II*\0"sv).little(4, {directory}).little(2, {1, 0x112, 3}).little(4, {1, orientation, 0});
  segment.big(2, {0xFFE1, static_cast<uint32_t>(block.view().size()) + 2}).text(block.view());
  return segment;
}

// Empty scans, one behind the other.
Bytes bomb() {
  Bytes file;
  file.big(2, {0xFFD8, 0xFFC2, 11}).big(1, {8, 0, 64, 0, 64, 1, 1, 0x11, 0});
  file.big(2, {0xFFDB, 67}).big(1, {0}).text(std::string(64, '\1'));
  file.big(2, {0xFFC4, 20}).big(1, {0x00, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  for (int i = 0; i < 130; ++i) file.big(2, {0xFFDA, 8}).big(1, {1, 1, 0, 0, 0, 0x00}).zeros(8);
  return file.big(2, {0xFFD9});
}

std::vector<Seed> pngSeeds() {
  const auto huge = png(0x7FFFFFFF, 0x7FFFFFFF, 8, 0, "\0\1"sv);
  return {
      as(png(3, 2, 8, 0, "\0\1\x80\xff\2\5\5\5"sv), "grey.png"),
      as(png(2, 1, 16, 2, "\1\1\2\3\4\5\6\xff\xfe\0\1\x80\0"sv), "16-bits.png"),
      as(png(9, 2, 1, 3, "\0\xaa\x80\0\x55\0"sv), "palette-transparent.png"),
      as(png(3, 1, 2, 0, "\0\x6c"sv, 0, "tRNS", "\0\1"sv), "2-bits-transparent.png"),
      as(png(3, 1, 4, 0, "\0\x6c\x80"sv), "4-bits.png"),
      as(png(1, 2, 16, 4, "\0\1\2\3\4\0\5\6\7\x8"sv), "16-bits-alpha.png"),
      as(png(2, 2, 8, 2, "\0\1\2\3\0\4\5\6\0\7\x8\x9\1\2\3"sv, 1), "interlaced.png"),
      as(png(3, 2, 8, 0, "\0\1\x80\xff\2\5\5\5"sv, 0, "eXIf",
             Bytes().text("MM\0*"sv).big(4, {8}).big(2, {1, 0x112, 3}).big(4, {1, 6 << 16, 0}).view()),
         "turned.png"),
      as(huge, "huge.png"),
  };
}

std::vector<Seed> jpegSeeds() {
  return {
      as(jpeg(), "grey.jpg"),
      as(jpeg(exif(8, 6).view()), "turned.jpg"),
      as(jpeg(exif(8, 0).view()), "orientation-0.jpg"),
      as(jpeg(exif(8, 9).view()), "orientation-9.jpg"),
      as(jpeg(exif(0xFFFFFFF0, 6).view()), "exif-outside.jpg"),
      as(jpeg("\xff\xee\0\x0e"
              "Adobe\0\x64\0\0\0\0\2"sv),
         "adobe.jpg"),
      as(bomb(), "scans.jpg"),
  };
}

std::vector<Seed> tiffSeeds() {
  constexpr auto kRow = "\0\1\2\3\4\5\6\7\xff\xff\xfe\0"sv;
  return {
      as(tiff(false, 3, 2, 16, 1, kRow), "16-bits.tif"),
      as(tiff(true, 4, 2, 8, 32773, "\xfd\x70\3\1\2\3\4"sv), "packed.tif"),
      as(tiff(false, 4, 1, 8, 5, "\x80\0\x40\x40\x30\x24\x04"sv), "codes.tif"),
      as(tiff(false, 4, 2, 12, 1, kRow), "12-bits.tif"),
      as(tiff(false, 3, 1, 32, 1, kRow, {{339, 3}}), "floats.tif"),
      as(tiff(false, 3, 2, 16, 1, kRow, {{339, 2}}), "signed.tif"),
      as(tiff(false, 8, 3, 1, 1, kRow, {{262, 0}}), "white-is-0.tif"),
      as(tiff(false, 6, 2, 8, 5, kRow, {{317, 2}}), "predictor.tif"),
      as(tiff(false, 2, 2, 8, 1, kRow, {{262, 2}, {277, 3}, {284, 2}}), "planes.tif"),
      as(tiff(false, 3, 2, 16, 1, kRow, {{274, 6}}), "turned.tif"),
      as(tiff(false, 3, 2, 16, 1, kRow, {}, 8), "loop.tif"),
      as(tiff(false, 3, 2, 16, 1, kRow, {{273, 0xFFFFFF00}}), "strip-outside.tif"),
      as(tiff(false, 3, 2, 16, 1, kRow, {{279, 0xFFFFFFFF}}), "strip-without-end.tif"),
      as(tiff(false, 3, 2, 8, 1, kRow, {{322, 0x80000000}, {323, 0x80000000}, {324, 200}, {325, 12}}),
         "tiles-of-2^31.tif"),
      as(tiff(false, 3, 2, 8, 1, kRow, {{322, 16}, {323, 16}, {324, 200}, {325, 12}}), "tiles-cut.tif"),
      as(tiff(false, 0xFFFFFFFF, 0xFFFFFFFF, 8, 1, kRow), "huge.tif"),
  };
}

}  // namespace

std::vector<Seed> seeds() {
  std::vector<Seed> all;
  for (const auto& some : {pngSeeds(), jpegSeeds(), tiffSeeds()}) all.insert(all.end(), some.begin(), some.end());
  return all;
}

}  // namespace dax::fuzz
