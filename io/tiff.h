// TIFF files in memory, as libtiff opens them.
#pragma once

#include <tiffio.h>

#include <memory>

#include "io/codec.h"

namespace dax::io {

// What libtiff reads from or writes to, and what it says.
struct TiffStream {
  FileBytes file;           // read
  Growing* made = nullptr;  // or written
  uint64_t place = 0;
  DaxioMessage* message;
  bool failed = false;
};

struct TiffClose {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, TiffClose>;

// mode: "r" or "w". No allocation of libtiff's is larger than `maxBytes`. Null for a file that it does not open.
Tiff openTiff(TiffStream& stream, const char* mode, uint64_t maxBytes);

DaxStatus writeTiff(const DaxiImageRecord& image, const Pixels& pixels, const DaxiImageWriteCfg& cfg, Growing& file,
                    DaxioMessage* message);

}  // namespace dax::io
