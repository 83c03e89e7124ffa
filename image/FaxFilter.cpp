// The filter for fax data.

#include <limits>

#include "host/ORXMMediaImage.h"
#include "host/ORXRasterDecoders.h"
#include "image/DecodeFilters.h"
#include "ps/Dictionaries.h"
#include "ps/Limits.h"

namespace orxeps {

namespace {

// What the fax filter asks of the raster formats library: nothing but its defaults.
class FaxDecodingOption final : public ORXMMediaImageDecodingOption {
public:
  FaxDecodingOption() noexcept { SetOptionValue(0); }
  ~FaxDecodingOption() override = default;
};

void TakeFlag(const ORXHashDico& dictionary, const char* key, std::uint8_t& flag) {
  const PSObject* value = DictLocate(dictionary, key);
  if (value && value->Is(PSObjectType::Boolean)) flag = value->boolValue;
}

void TakeNumber(const ORXHashDico& dictionary, const char* key, std::int32_t& number) {
  const PSObject* value = DictLocate(dictionary, key);
  if (value && value->Is(PSObjectType::Integer)) number = value->intValue;
}

// The bytes of the bitmap; 0 when it has none or more than an image may have.
std::size_t BitmapBytes(const FaxParameters& parameters) noexcept {
  if (parameters.columns <= 0 || parameters.rows <= 0) return 0;
  const auto rowBytes = (static_cast<std::uint64_t>(parameters.columns) + 7) / 8;
  const std::uint64_t bytes = rowBytes * static_cast<std::uint64_t>(parameters.rows);
  return bytes <= kMaxImageBytes ? static_cast<std::size_t>(bytes) : 0;
}

bool DecodeBitmap(const FaxParameters& parameters, std::span<const unsigned char> encoded,
                  ByteBuffer& bitmap) {
  int size[2] = {parameters.columns, parameters.rows};
  int decodedRows = 0;
  int errors = 0;
  const int status = CCITT_G4_dec(encoded.data(), static_cast<int>(encoded.size()), size,
                                  bitmap.Data(), decodedRows, errors);
  return status == 0 && errors == 0 && decodedRows > 0;
}

// Sends the bitmap through the raster formats library, whose pixels the filter hands out.
ByteBuffer ConvertBitmap(const FaxParameters& parameters, ByteBuffer bitmap) {
  const FaxDecodingOption option;
  ORXPixelImage* image = ORXMMediaImageConverter::CreatePixelImage(
      bitmap.Data(), static_cast<int>(bitmap.Length()), parameters.columns, parameters.rows,
      ORXMMediaImageType::Fax, &option);
  if (!image) return {};
  const std::size_t length = bitmap.Length();
  bitmap = {};
  image->PrepareData();
  ByteBuffer pixels(image->ExtractData(0, 1), length);
  image->Release();
  return pixels;
}

}  // namespace

FilterStatus CCITTFaxDecodeFilter::SetParameters(const ORXHashDico& dictionary) {
  TakeFlag(dictionary, "Uncompressed", parameters.uncompressed);
  TakeNumber(dictionary, "K", parameters.k);
  TakeFlag(dictionary, "EndOfLine", parameters.endOfLine);
  TakeFlag(dictionary, "EncodedByteAlign", parameters.encodedByteAlign);
  TakeNumber(dictionary, "Columns", parameters.columns);
  TakeNumber(dictionary, "Rows", parameters.rows);
  TakeFlag(dictionary, "EndOfBlock", parameters.endOfBlock);
  TakeFlag(dictionary, "BlackIs1", parameters.blackIs1);
  TakeNumber(dictionary, "DamagedRowsBeforeError", parameters.damagedRowsBeforeError);
  return kFilterSuccess;
}

FilterStatus CCITTFaxDecodeFilter::Decode(std::span<const unsigned char> encoded,
                                          ByteBuffer& decoded) {
  decoded = {};
  if (parameters.k >= 0) return kFilterFailure;
  if (encoded.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    return kFilterFailure;
  }
  ByteBuffer bitmap = ByteBuffer::Zeroed(BitmapBytes(parameters));
  if (bitmap.IsEmpty() || !DecodeBitmap(parameters, encoded, bitmap)) return kFilterFailure;
  decoded = ConvertBitmap(parameters, std::move(bitmap));
  return decoded.IsEmpty() ? kFilterFailure : kFilterSuccess;
}

FilterStatus CCITTFaxDecodeFilter::ReadAndDecode(InputReader* /*input*/, ByteBuffer& decoded) {
  decoded = {};
  return kFilterFailure;
}

FilterStatus CCITTFaxDecodeFilter::ReadEncoded(InputReader* /*input*/, ByteBuffer& encoded) {
  encoded = {};
  return kFilterFailure;
}

}  // namespace orxeps
