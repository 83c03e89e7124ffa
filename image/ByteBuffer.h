// A block of bytes on its way through the decode filters and into an image.
//
// The memory comes from the C library's allocator, as that of the framework's decoders does, so
// that their buffers can be taken over without a copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <utility>

namespace orxeps {

class ByteBuffer {
public:
  ByteBuffer() noexcept = default;
  // Takes over `length` bytes that were allocated with std::malloc, or null.
  ByteBuffer(unsigned char* allocated, std::size_t length) noexcept
      : memory(allocated), count(allocated ? length : 0) {}
  ByteBuffer(ByteBuffer&& other) noexcept
      : memory(std::move(other.memory)), count(std::exchange(other.count, 0)) {}
  ByteBuffer& operator=(ByteBuffer&& other) noexcept {
    memory = std::move(other.memory);
    count = std::exchange(other.count, 0);
    return *this;
  }
  ~ByteBuffer() = default;

  // Zero bytes; an absent buffer when memory runs out or `length` is 0.
  [[nodiscard]] static ByteBuffer Zeroed(std::size_t length) noexcept {
    if (length == 0) return {};
    return {static_cast<unsigned char*>(std::calloc(length, 1)), length};
  }
  // Bytes of any value.
  [[nodiscard]] static ByteBuffer Unset(std::size_t length) noexcept {
    if (length == 0) return {};
    return {static_cast<unsigned char*>(std::malloc(length)), length};
  }

  [[nodiscard]] bool IsEmpty() const noexcept { return count == 0; }
  [[nodiscard]] std::size_t Length() const noexcept { return count; }
  [[nodiscard]] unsigned char* Data() noexcept { return memory.get(); }
  [[nodiscard]] std::span<unsigned char> Bytes() noexcept { return {memory.get(), count}; }
  [[nodiscard]] std::span<const unsigned char> Bytes() const noexcept {
    return {memory.get(), count};
  }

  // Makes the buffer longer with bytes of any value. False, and the buffer as it was, when memory
  // runs out. REQUIRES: length >= Length(), length > 0.
  [[nodiscard]] bool Extend(std::size_t length) noexcept {
    auto* larger = static_cast<unsigned char*>(std::realloc(memory.get(), length));
    if (!larger) return false;
    static_cast<void>(memory.release());
    memory.reset(larger);
    count = length;
    return true;
  }
  // Cuts the buffer, or makes it longer with zero bytes. False, and the buffer as it was, when
  // memory runs out. REQUIRES: length > 0.
  [[nodiscard]] bool Resize(std::size_t length) noexcept {
    const std::size_t before = count;
    if (length > before) {
      if (!Extend(length)) return false;
      std::memset(memory.get() + before, 0, length - before);
    }
    count = length;
    return true;
  }

private:
  struct Free {
    void operator()(unsigned char* bytes) const noexcept { std::free(bytes); }
  };

  std::unique_ptr<unsigned char[], Free> memory;
  std::size_t count = 0;
};

}  // namespace orxeps
