// The decode filters that image data passes through.
//
// An interpreter has one filter of each kind, made on first use and kept as long as the
// interpreter; every file and every image of the document that uses the kind uses that filter, and
// parameters stay from one use to the next. Only the base-85 filter can take data from the input;
// the others decode what it produced.
//
// A status is 0 or more for success and negative for failure.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "host/ORXHashDico.h"
#include "image/ByteBuffer.h"

namespace orxeps {

class InputReader;

using FilterStatus = std::int32_t;
inline constexpr FilterStatus kFilterSuccess = 0;
inline constexpr FilterStatus kFilterFailure = static_cast<FilterStatus>(0x80004005U);  // E_FAIL

enum class FilterKind : std::uint32_t { ASCII85 = 1, RunLength = 3, CCITTFax = 4 };

class DecodeFilter {
public:
  const FilterKind filterKind;

  DecodeFilter(const DecodeFilter&) = delete;
  DecodeFilter& operator=(const DecodeFilter&) = delete;
  virtual ~DecodeFilter() = default;

  // Takes what it knows from a parameter dictionary; anything else stays as it was.
  virtual FilterStatus SetParameters(const ORXHashDico& parameters) = 0;
  // Decodes a block; `decoded` is empty after a failure.
  virtual FilterStatus Decode(std::span<const unsigned char> encoded, ByteBuffer& decoded) = 0;
  // Reads a block from the input and decodes it.
  virtual FilterStatus ReadAndDecode(InputReader* input, ByteBuffer& decoded) = 0;
  // Reads a block from the input as it stands there.
  virtual FilterStatus ReadEncoded(InputReader* input, ByteBuffer& encoded) = 0;

protected:
  explicit DecodeFilter(FilterKind kind) noexcept : filterKind(kind) {}
};

class ASCII85DecodeFilter final : public DecodeFilter {
public:
  ASCII85DecodeFilter() noexcept : DecodeFilter(FilterKind::ASCII85) {}

  FilterStatus SetParameters(const ORXHashDico& parameters) override;
  FilterStatus Decode(std::span<const unsigned char> encoded, ByteBuffer& decoded) override;
  FilterStatus ReadAndDecode(InputReader* input, ByteBuffer& decoded) override;
  // The characters of the encoding up to the end marker "~>", without anything between them. The
  // input then stands right behind the marker. Fails when there is none or something lies between
  // its two characters.
  FilterStatus ReadEncoded(InputReader* input, ByteBuffer& encoded) override;
};

class RunLengthDecodeFilter final : public DecodeFilter {
public:
  RunLengthDecodeFilter() noexcept : DecodeFilter(FilterKind::RunLength) {}

  FilterStatus SetParameters(const ORXHashDico& parameters) override;
  FilterStatus Decode(std::span<const unsigned char> encoded, ByteBuffer& decoded) override;
  FilterStatus ReadAndDecode(InputReader* input, ByteBuffer& decoded) override;
  FilterStatus ReadEncoded(InputReader* input, ByteBuffer& encoded) override;
};

// What a CCITTFaxDecode parameter dictionary can say, with the PostScript language's defaults. Only
// k, columns and rows change the decoding.
struct FaxParameters {
  std::uint8_t uncompressed = 0;
  std::int32_t k = 0;
  std::uint8_t endOfLine = 0;
  std::uint8_t encodedByteAlign = 0;
  std::int32_t columns = 1728;
  std::int32_t rows = 0;
  std::uint8_t endOfBlock = 1;
  std::uint8_t blackIs1 = 0;
  std::int32_t damagedRowsBeforeError = 0;
};

// Decodes pure two-dimensional coding (K below 0): ITU-T T.6, Group 4.
class CCITTFaxDecodeFilter final : public DecodeFilter {
public:
  CCITTFaxDecodeFilter() noexcept : DecodeFilter(FilterKind::CCITTFax) {}

  FaxParameters parameters;

  FilterStatus SetParameters(const ORXHashDico& dictionary) override;
  // One bit per pixel, rows padded to whole bytes, 0 black.
  FilterStatus Decode(std::span<const unsigned char> encoded, ByteBuffer& decoded) override;
  FilterStatus ReadAndDecode(InputReader* input, ByteBuffer& decoded) override;
  FilterStatus ReadEncoded(InputReader* input, ByteBuffer& encoded) override;
};

// The filters of one interpreter and the document that they read, which is borrowed.
class FilterSet {
public:
  explicit FilterSet(InputReader& documentReader) noexcept : document(documentReader) {}

  InputReader& document;

  // The filter of this name, made if need be; null for any other name. Borrowed. Throws
  // std::bad_alloc.
  [[nodiscard]] DecodeFilter* ForName(std::string_view name);

private:
  std::unique_ptr<ASCII85DecodeFilter> ascii85Filter;
  std::unique_ptr<RunLengthDecodeFilter> runLengthFilter;
  std::unique_ptr<CCITTFaxDecodeFilter> ccittFaxFilter;
};

}  // namespace orxeps
