// Seeds of the image target: a small file of every format that the program reads, and of the ways in which they pack.
#pragma once

#include <string>

namespace dax::fuzz {

// Writes them into an existing directory.
void saveImages(const std::string& directory);

}  // namespace dax::fuzz
