// The Group 4 decoder. In front of the data stand two bytes each for the columns and the rows, high
// byte first.
#include <algorithm>
#include <memory>

#include "fuzz/FuzzHost.h"
#include "host/ORXRasterDecoders.h"

namespace {

constexpr std::size_t kMaxBitmapBytes = std::size_t{1} << 18;

// The pad bits of every row and all of the rows that were not decoded are white.
void RequireWhiteBehind(std::span<const unsigned char> bitmap, std::size_t columns,
                        std::size_t decodedRows) {
  const std::size_t rowBytes = (columns + 7) / 8;
  const auto padBits = static_cast<unsigned char>(columns % 8 == 0 ? 0 : 0xFFU >> columns % 8);
  for (std::size_t end = rowBytes; end <= bitmap.size(); end += rowBytes) {
    orxfuzz::Require((bitmap[end - 1] & padBits) == padBits, "pad bits are white");
  }
  const auto missing = bitmap.subspan(decodedRows * rowBytes);
  const auto isWhite = [](unsigned char byte) { return byte == 0xFF; };
  orxfuzz::Require(std::ranges::all_of(missing, isWhite), "missing rows are white");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orxfuzz::InputBytes bytes({data, size});
  int dimensions[2] = {std::max(bytes.Word(), 1), std::max(bytes.Word(), 1)};
  const auto columns = static_cast<std::size_t>(dimensions[0]);
  const std::size_t bitmapBytes = (columns + 7) / 8 * static_cast<std::size_t>(dimensions[1]);
  if (bitmapBytes > kMaxBitmapBytes) return 0;

  // Buffers of exactly these sizes, so that every access beyond them is seen.
  const auto encoded = std::make_unique<unsigned char[]>(bytes.Rest().size());
  std::ranges::copy(bytes.Rest(), encoded.get());
  const auto bitmap = std::make_unique<unsigned char[]>(bitmapBytes);
  int rowCount = -1;
  int errorCount = -1;
  const int status = CCITT_G4_dec(encoded.get(), static_cast<int>(bytes.Rest().size()), dimensions,
                                  bitmap.get(), rowCount, errorCount);
  orxfuzz::Require(rowCount >= 0 && rowCount <= dimensions[1], "rows are counted within the image");
  orxfuzz::Require((status == 0) == (rowCount > 0 && errorCount == 0),
                   "success means rows and no errors");
  if (status == 0) {
    RequireWhiteBehind({bitmap.get(), bitmapBytes}, columns, static_cast<std::size_t>(rowCount));
  }
  return 0;
}
