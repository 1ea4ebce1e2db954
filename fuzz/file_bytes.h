// Bytes of files as texts and numbers.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace dax::fuzz {

class Bytes {
 public:
  Bytes& text(std::string_view text) {
    bytes_ += text;
    return *this;
  }
  Bytes& zeros(size_t count) {
    bytes_.append(count, '\0');
    return *this;
  }
  // Numbers of `width` bytes.
  Bytes& big(int width, std::initializer_list<uint32_t> numbers) {
    for (const uint32_t number : numbers) {
      for (int i = width; i-- > 0;) bytes_ += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return *this;
  }
  Bytes& little(int width, std::initializer_list<uint32_t> numbers) {
    for (const uint32_t number : numbers) {
      for (int i = 0; i < width; ++i) bytes_ += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return *this;
  }
  std::string& bytes() { return bytes_; }
  std::string_view view() const { return bytes_; }
  operator std::string() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace dax::fuzz
