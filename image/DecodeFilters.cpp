#include "image/DecodeFilters.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>

#include "host/ORXRasterDecoders.h"
#include "ps/InputReader.h"
#include "ps/Limits.h"

namespace orxeps {

namespace {

using HostDecoder = int (*)(const unsigned char*, unsigned int, unsigned char*&, unsigned int&,
                            int) noexcept;

FilterStatus DecodeByHost(HostDecoder decode, std::span<const unsigned char> encoded,
                          ByteBuffer& decoded) {
  decoded = {};
  if (encoded.size() > std::numeric_limits<unsigned int>::max()) return kFilterFailure;
  unsigned char* bytes = nullptr;
  unsigned int length = 0;
  const FilterStatus status =
      decode(encoded.data(), static_cast<unsigned int>(encoded.size()), bytes, length, 0);
  ByteBuffer result(bytes, length);
  if (status < 0) return status;
  if (result.Length() > kMaxImageBytes) return kFilterFailure;
  decoded = std::move(result);
  return status;
}

// 1 for each byte that the base-85 encoding is written with.
constexpr std::array<std::uint8_t, 256> MakeBase85Bytes() {
  std::array<std::uint8_t, 256> bytes{};
  for (std::size_t byte = '!'; byte <= 'u'; ++byte) bytes[byte] = 1;
  bytes['z'] = 1;
  return bytes;
}
constexpr std::array<std::uint8_t, 256> kBase85Bytes = MakeBase85Bytes();

// Collects bytes whose number is not known beforehand, up to the ceiling of an image.
class Collector {
public:
  // Adds those bytes of a text that the encoding is written with. False when there is no more room.
  [[nodiscard]] bool AddBase85(std::string_view text) noexcept {
    if (buffer.Length() - used < text.size() && !Grow(text.size())) return false;
    unsigned char* end = buffer.Data() + used;
    for (const char c : text) {
      *end = static_cast<unsigned char>(c);
      end += kBase85Bytes[static_cast<unsigned char>(c)];
    }
    used = static_cast<std::size_t>(end - buffer.Data());
    return true;
  }
  [[nodiscard]] bool AddEndMarker() noexcept {
    if (buffer.Length() - used < 2 && !Grow(2)) return false;
    buffer.Data()[used++] = '~';
    buffer.Data()[used++] = '>';
    return true;
  }
  [[nodiscard]] ByteBuffer Finish() noexcept {
    if (used > 0) static_cast<void>(buffer.Resize(used));
    return std::move(buffer);
  }

private:
  bool Grow(std::size_t more) noexcept {
    constexpr std::size_t kFirstBytes = 4096;
    if (used >= kMaxImageBytes) return false;
    return buffer.Extend(std::max({kFirstBytes, used * 2, used + more}));
  }

  ByteBuffer buffer;
  std::size_t used = 0;
};

// Takes the text up to and with a "~", piece by piece. False when the input ends before it; `fits`
// becomes false when there is no room, and the rest is read all the same.
bool TakeThroughTilde(InputReader& input, Collector& collector, bool& fits) {
  char byte = 0;
  while (input.ReadByte(byte)) {
    if (byte == '~') return true;
    const std::string_view ready = input.Ready();
    const std::string_view piece = ready.substr(0, ready.find('~'));
    fits = fits && collector.AddBase85({&byte, 1}) && collector.AddBase85(piece);
    input.Skip(piece.size());
  }
  return false;
}

}  // namespace

FilterStatus ASCII85DecodeFilter::SetParameters(const ORXHashDico& /*parameters*/) {
  return kFilterSuccess;
}

FilterStatus ASCII85DecodeFilter::Decode(std::span<const unsigned char> encoded,
                                         ByteBuffer& decoded) {
  return DecodeByHost(ASCII85Decode, encoded, decoded);
}

// Data beyond the ceiling is read all the same: the program goes on behind it.
FilterStatus ASCII85DecodeFilter::ReadEncoded(InputReader* input, ByteBuffer& encoded) {
  encoded = {};
  if (!input || !input->HasStream()) return kFilterFailure;
  Collector collector;
  bool fits = true;
  char byte = 0;
  if (!TakeThroughTilde(*input, collector, fits)) return kFilterFailure;
  if (!input->ReadByte(byte) || byte != '>') return kFilterFailure;
  if (!fits || !collector.AddEndMarker()) return kFilterFailure;
  encoded = collector.Finish();
  return kFilterSuccess;
}

FilterStatus ASCII85DecodeFilter::ReadAndDecode(InputReader* input, ByteBuffer& decoded) {
  decoded = {};
  ByteBuffer encoded;
  if (ReadEncoded(input, encoded) < 0 || encoded.IsEmpty()) return kFilterFailure;
  return Decode(encoded.Bytes(), decoded);
}

FilterStatus RunLengthDecodeFilter::SetParameters(const ORXHashDico& /*parameters*/) {
  return kFilterSuccess;
}

FilterStatus RunLengthDecodeFilter::Decode(std::span<const unsigned char> encoded,
                                           ByteBuffer& decoded) {
  return DecodeByHost(RunLengthDecode, encoded, decoded);
}

FilterStatus RunLengthDecodeFilter::ReadAndDecode(InputReader* /*input*/, ByteBuffer& decoded) {
  decoded = {};
  return kFilterFailure;
}

FilterStatus RunLengthDecodeFilter::ReadEncoded(InputReader* /*input*/, ByteBuffer& encoded) {
  encoded = {};
  return kFilterFailure;
}

DecodeFilter* FilterSet::ForName(std::string_view name) {
  const auto makeOnce = [](auto& filter) -> DecodeFilter* {
    using Filter = typename std::remove_reference_t<decltype(filter)>::element_type;
    if (!filter) filter = std::make_unique<Filter>();
    return filter.get();
  };
  if (name == "ASCII85Decode") return makeOnce(ascii85Filter);
  if (name == "RunLengthDecode") return makeOnce(runLengthFilter);
  if (name == "CCITTFaxDecode") return makeOnce(ccittFaxFilter);
  return nullptr;
}

}  // namespace orxeps
