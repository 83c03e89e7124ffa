#include "image/DecodeFilters.h"

#include <limits>

#include "host/ORXRasterDecoders.h"
#include "host/PrintInputStream.h"
#include "plugin/ORXPrintEPSInterpreter.h"
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

// What the base-85 encoding is written with.
bool IsBase85(char byte) noexcept { return byte == 'z' || (byte >= '!' && byte <= 'u'); }

// Collects bytes whose number is not known beforehand, up to the ceiling of an image.
class Collector {
public:
  // False when there is no more room.
  [[nodiscard]] bool Add(char byte) noexcept {
    if (used == buffer.Length() && !Grow()) return false;
    buffer.Data()[used++] = static_cast<unsigned char>(byte);
    return true;
  }
  [[nodiscard]] ByteBuffer Finish() noexcept {
    if (used > 0) static_cast<void>(buffer.Resize(used));
    return std::move(buffer);
  }

private:
  bool Grow() noexcept {
    constexpr std::size_t kFirstBytes = 4096;
    if (used >= kMaxImageBytes) return false;
    ByteBuffer larger = ByteBuffer::Unset(used == 0 ? kFirstBytes : used * 2);
    if (larger.IsEmpty()) return false;
    if (used > 0) std::memcpy(larger.Data(), buffer.Data(), used);
    buffer = std::move(larger);
    return true;
  }

  ByteBuffer buffer;
  std::size_t used = 0;
};

}  // namespace

FilterStatus ASCII85DecodeFilter::SetParameters(const ORXHashDico& /*parameters*/) {
  return kFilterSuccess;
}

FilterStatus ASCII85DecodeFilter::Decode(std::span<const unsigned char> encoded,
                                         ByteBuffer& decoded) {
  return DecodeByHost(ASCII85Decode, encoded, decoded);
}

FilterStatus ASCII85DecodeFilter::ReadEncoded(PrintInputStream* input, ByteBuffer& encoded) {
  encoded = {};
  if (!input) return kFilterFailure;
  Collector collector;
  bool fits = true;
  char byte = 0;
  FilterStatus status = input->ReadByte(&byte);
  while (status >= 0 && byte != '~') {
    // Data beyond the ceiling is read all the same: the program goes on behind it.
    if (IsBase85(byte)) fits = fits && collector.Add(byte);
    status = input->ReadByte(&byte);
  }
  if (status >= 0) status = input->ReadByte(&byte);
  if (status < 0 || byte != '>') return kFilterFailure;
  if (!fits || !collector.Add('~') || !collector.Add('>')) return kFilterFailure;
  encoded = collector.Finish();
  return status;
}

FilterStatus ASCII85DecodeFilter::ReadAndDecode(PrintInputStream* input, ByteBuffer& decoded) {
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

FilterStatus RunLengthDecodeFilter::ReadAndDecode(PrintInputStream* /*input*/,
                                                  ByteBuffer& decoded) {
  decoded = {};
  return kFilterFailure;
}

FilterStatus RunLengthDecodeFilter::ReadEncoded(PrintInputStream* /*input*/, ByteBuffer& encoded) {
  encoded = {};
  return kFilterFailure;
}

DecodeFilter* FilterForName(ORXPrintEPSInterpreter& interpreter, const ORXString& name) {
  const auto makeOnce = [](auto& filter) -> DecodeFilter* {
    using Filter = typename std::remove_reference_t<decltype(filter)>::element_type;
    if (!filter) filter = std::make_unique<Filter>();
    return filter.get();
  };
  if (name.View() == "ASCII85Decode") return makeOnce(interpreter.ascii85Filter);
  if (name.View() == "RunLengthDecode") return makeOnce(interpreter.runLengthFilter);
  if (name.View() == "CCITTFaxDecode") return makeOnce(interpreter.ccittFaxFilter);
  return nullptr;
}

}  // namespace orxeps
