// Run-length decoding: one pass adds up the runs, which gives the exact size of the result, the
// second writes them.
#include <cstring>
#include <optional>
#include <span>

#include "framework/DecodedBuffer.h"
#include "host/ORXRasterDecoders.h"

using orxframework::DecodedBuffer;

namespace {

constexpr unsigned char kEndOfData = 128;

// One run: its bytes as they stand in the data, and how many bytes it gives.
struct Run {
  std::span<const unsigned char> bytes;
  std::size_t decodedBytes = 0;
};

// Takes the run at the front; one of no bytes is the end. Nothing if it is cut short.
std::optional<Run> TakeRun(std::span<const unsigned char>& data) noexcept {
  if (data.empty() || data.front() == kEndOfData) return Run{};
  const unsigned code = data.front();
  const std::size_t stored = code < kEndOfData ? code + 1 : 1;
  if (data.size() - 1 < stored) return std::nullopt;
  const Run run{data.subspan(1, stored), code < kEndOfData ? stored : 257 - code};
  data = data.subspan(1 + stored);
  return run;
}

// The bytes of all runs; nothing if one is cut short.
std::optional<std::size_t> DecodedBytes(std::span<const unsigned char> data) noexcept {
  std::size_t total = 0;
  while (true) {
    const auto run = TakeRun(data);
    if (!run) return std::nullopt;
    if (run->decodedBytes == 0) return total;
    total += run->decodedBytes;
  }
}

// REQUIRES: no run is cut short, and `to` has room for all.
void Decode(std::span<const unsigned char> data, unsigned char* to) noexcept {
  for (Run run = *TakeRun(data); run.decodedBytes != 0; run = *TakeRun(data)) {
    if (run.bytes.size() == run.decodedBytes) {
      std::memcpy(to, run.bytes.data(), run.decodedBytes);
    } else {
      std::memset(to, run.bytes.front(), run.decodedBytes);
    }
    to += run.decodedBytes;
  }
}

}  // namespace

int RunLengthDecode(const unsigned char* in, unsigned int length, unsigned char*& out,
                    unsigned int& outLength, int /*reserved*/) noexcept {
  out = nullptr;
  outLength = 0;
  const std::span data(in, length);
  const auto size = DecodedBytes(data);
  if (!size) return -1;
  DecodedBuffer decoded = orxframework::MakeDecodedBuffer(*size);
  if (!decoded) return -1;
  Decode(data, decoded.get());
  out = decoded.release();
  outLength = static_cast<unsigned>(*size);
  return 0;
}
