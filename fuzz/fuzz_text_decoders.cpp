// The base-85 and the run-length decoder; the first byte chooses.
#include <algorithm>
#include <cstdlib>
#include <memory>

#include "fuzz/FuzzHost.h"
#include "host/ORXRasterDecoders.h"

namespace {

// The most bytes that one byte of the encoding can stand for.
constexpr std::size_t kBase85Expansion = 4;
constexpr std::size_t kRunLengthExpansion = 64;

// Reads every byte, so that a buffer shorter than its length is seen.
unsigned SumOf(std::span<const unsigned char> bytes) noexcept {
  unsigned sum = 0;
  for (const unsigned char byte : bytes) sum += byte;
  return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orxfuzz::InputBytes bytes({data, size});
  const bool isBase85 = bytes.Byte() % 2 == 0;
  const auto length = static_cast<unsigned>(bytes.Rest().size());
  const auto encoded = std::make_unique<unsigned char[]>(length);
  std::ranges::copy(bytes.Rest(), encoded.get());

  unsigned char* decoded = nullptr;
  unsigned decodedLength = 0;
  const int status = (isBase85 ? ASCII85Decode : RunLengthDecode)(encoded.get(), length, decoded,
                                                                  decodedLength, 0);
  const std::size_t expansion = isBase85 ? kBase85Expansion : kRunLengthExpansion;
  orxfuzz::Require(decodedLength <= length * expansion, "the result is as long as it can be");
  orxfuzz::Require(status >= 0 || (!decoded && decodedLength == 0), "a failure gives no buffer");
  orxfuzz::Require(decoded || decodedLength == 0, "a result has a buffer");
  volatile unsigned sum = SumOf({decoded, decodedLength});
  static_cast<void>(sum);
  std::free(decoded);
  return 0;
}
