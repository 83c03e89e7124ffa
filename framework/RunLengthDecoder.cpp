// Run-length decoding in one pass, into a buffer that grows as it fills and is cut to size at the
// end.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "framework/DecodedBuffer.h"
#include "host/ORXRasterDecoders.h"

using orxframework::DecodedBuffer;
using orxframework::kMaxDecodedBytes;

namespace {

constexpr unsigned kEndOfData = 128;

// A code up to 127 copies what follows it, and one from 129 repeats it.
constexpr std::size_t StoredBytes(unsigned code) noexcept {
  return code < kEndOfData ? code + 1 : 1;
}
constexpr std::size_t RunLength(unsigned code) noexcept {
  return code < kEndOfData ? code + 1 : 257 - code;
}

// The most that one run gives, in whole strides.
constexpr std::size_t kLongestRun = 128;
// Most runs are short. Where there is room for more than the run, this much is written at once and
// what is too much is written over by the next run.
constexpr std::size_t kStride = 32;
static_assert(kLongestRun % kStride == 0);

// Writes kStride bytes of a run of either kind. Which kind the next run is cannot be foreseen, so
// nothing here branches on it.
void WriteStride(const unsigned char* from, bool repeats, unsigned char* to) noexcept {
  const std::uint64_t repeated = *from * 0x0101010101010101U;
  for (std::size_t done = 0; done < kStride; done += sizeof repeated) {
    std::uint64_t word = 0;
    std::memcpy(&word, from + done, sizeof word);
    if (repeats) word = repeated;
    std::memcpy(to + done, &word, sizeof word);
  }
}

void CopyInStrides(const unsigned char* from, unsigned char* to, std::size_t length) noexcept {
  for (std::size_t done = 0; done < length; done += kStride) {
    std::memcpy(to + done, from + done, kStride);
  }
}

class RunLengthReader {
public:
  explicit RunLengthReader(std::span<const unsigned char> data) noexcept
      : from(data.data()), end(from + data.size()) {}

  // False if the last run is cut short, the result is too long or memory runs out.
  bool Decode() noexcept {
    while (from != end && *from != kEndOfData) {
      const std::size_t stored = StoredBytes(*from);
      if (static_cast<std::size_t>(end - from) <= stored) return false;
      if (capacity - size < kLongestRun && !Grow()) return false;
      const unsigned code = *from++;
      Write(code);
      from += stored;
      size += RunLength(code);
    }
    return size <= kMaxDecodedBytes && orxframework::Resize(bytes, size);
  }

  [[nodiscard]] std::size_t Size() const noexcept { return size; }
  unsigned char* Release() noexcept { return bytes.release(); }

private:
  void Write(unsigned code) noexcept {
    const std::size_t length = RunLength(code);
    const bool repeats = code > kEndOfData;
    unsigned char* to = bytes.get() + size;
    const auto left = static_cast<std::size_t>(end - from);
    if (length <= kStride && left >= kStride) {
      WriteStride(from, repeats, to);
    } else if (repeats) {
      std::memset(to, *from, length);
    } else if (left >= kLongestRun) {
      CopyInStrides(from, to, length);
    } else {
      std::memcpy(to, from, length);
    }
  }

  // Makes room for a run of any length. A buffer may grow beyond what is handed out by as much.
  bool Grow() noexcept {
    if (size > kMaxDecodedBytes) return false;
    const auto left = static_cast<std::size_t>(end - from);
    capacity = std::min(std::max(2 * capacity, 2 * left), kMaxDecodedBytes) + kLongestRun;
    return orxframework::Resize(bytes, capacity);
  }

  const unsigned char* from;
  const unsigned char* end;
  DecodedBuffer bytes;
  std::size_t capacity = 0;
  std::size_t size = 0;
};

}  // namespace

int RunLengthDecode(const unsigned char* in, unsigned int length, unsigned char*& out,
                    unsigned int& outLength, int /*reserved*/) noexcept {
  out = nullptr;
  outLength = 0;
  RunLengthReader reader(std::span(in, length));
  if (!reader.Decode()) return -1;
  outLength = static_cast<unsigned>(reader.Size());
  out = reader.Release();
  return 0;
}
