// Memory that faults when it is overrun: a block that ends at, or begins at, a page without access.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace dax::test {

// Which end of the block lies against the forbidden page.
enum class Guard { after, before };
inline constexpr Guard kGuards[] = {Guard::after, Guard::before};

template <class T>
class GuardedBuffer {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  explicit GuardedBuffer(size_t count, Guard guard = Guard::after, uint8_t poison = 0xA5) : count_(count) {
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t bytes = count * sizeof(T);
    const size_t room = (bytes + page - 1) / page * page;
    mapped_ = room + 2 * page;
    map_ = static_cast<uint8_t*>(mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (map_ == MAP_FAILED || (room > 0 && mprotect(map_ + page, room, PROT_READ | PROT_WRITE) != 0)) {
      throw std::bad_alloc();
    }
    data_ = reinterpret_cast<T*>(map_ + page + (guard == Guard::after ? room - bytes : 0));
    std::memset(static_cast<void*>(data_), poison, bytes);
  }
  ~GuardedBuffer() {
    if (map_) munmap(map_, mapped_);
  }
  GuardedBuffer(GuardedBuffer&& other) noexcept
      : count_(other.count_), mapped_(other.mapped_), map_(std::exchange(other.map_, nullptr)), data_(other.data_) {}
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;

  T* data() { return data_; }
  const T* data() const { return data_; }
  size_t size() const { return count_; }
  T& operator[](size_t i) { return data_[i]; }
  const T& operator[](size_t i) const { return data_[i]; }
  T* begin() { return data_; }
  T* end() { return data_ + count_; }

 private:
  size_t count_;
  size_t mapped_;
  uint8_t* map_;
  T* data_;
};

}  // namespace dax::test
