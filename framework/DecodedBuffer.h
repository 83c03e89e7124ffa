// The buffer that a text decoder hands out: made by std::malloc at its exact size, and freed on
// the way out of every failure.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace orxframework {

// No decoder hands out more than this. A few bytes of input can ask for gigabytes.
inline constexpr std::size_t kMaxDecodedBytes = std::size_t{512} << 20;

struct FreeMemory {
  void operator()(unsigned char* memory) const noexcept { std::free(memory); }
};

using DecodedBuffer = std::unique_ptr<unsigned char[], FreeMemory>;

// Null when the size is above the limit or memory runs out. A buffer of no bytes is not null.
inline DecodedBuffer MakeDecodedBuffer(std::size_t size) noexcept {
  if (size > kMaxDecodedBytes) return nullptr;
  return DecodedBuffer(static_cast<unsigned char*>(std::malloc(size != 0 ? size : 1)));
}

// Makes a buffer larger or smaller and keeps what fits; false, and nothing changed, when memory
// runs out. A buffer of no bytes is not null.
inline bool Resize(DecodedBuffer& buffer, std::size_t size) noexcept {
  void* resized = std::realloc(buffer.get(), size != 0 ? size : 1);
  if (!resized) return false;
  static_cast<void>(buffer.release());
  buffer.reset(static_cast<unsigned char*>(resized));
  return true;
}

}  // namespace orxframework
