// Tokens of the PostScript language's binary encoding.

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "ps/CharacterClass.h"
#include "ps/Scanner.h"

namespace orxeps {

namespace {

// The kinds of token that are supported, by their first byte.
enum BinaryTokenType : unsigned char {
  kInteger32HighFirst = 132,
  kInteger32LowFirst = 133,
  kInteger16HighFirst = 134,
  kInteger16LowFirst = 135,
  kInteger8 = 136,
  kRealHighFirst = 138,
  kRealLowFirst = 139,
  kBoolean = 141,
  kShortString = 142,
  kSystemName = 146,
};

// An unsigned number of `Size` bytes.
template <int Size>
bool ReadNumber(InputReader& input, std::endian order, std::uint32_t& number) {
  std::array<unsigned char, Size> bytes{};
  if (!input.ReadBytes(bytes.data(), Size)) return false;
  number = 0;
  for (int i = 0; i < Size; ++i) {
    const auto place = static_cast<std::size_t>(order == std::endian::big ? i : Size - 1 - i);
    number = number << 8 | bytes[place];
  }
  return true;
}

template <int Size>
PSRef ReadInteger(InputReader& input, ObjectHeap& heap, std::endian order) {
  std::uint32_t number = 0;
  if (!ReadNumber<Size>(input, order, number)) return {};
  constexpr int kUnusedBits = 32 - 8 * Size;
  PSRef integer = heap.Make(PSObjectType::Integer);
  // Shifting up and back extends the sign.
  integer->intValue = static_cast<std::int32_t>(number << kUnusedBits) >> kUnusedBits;
  return integer;
}

PSRef ReadReal(InputReader& input, ObjectHeap& heap, std::endian order) {
  std::uint32_t bits = 0;
  if (!ReadNumber<4>(input, order, bits)) return {};
  PSRef real = heap.Make(PSObjectType::Real);
  real->realValue = std::bit_cast<float>(bits);
  return real;
}

PSRef ReadBoolean(InputReader& input, ObjectHeap& heap) {
  char byte = 0;
  if (!input.ReadByte(byte)) return {};
  PSRef boolean = heap.Make(PSObjectType::Boolean);
  boolean->boolValue = static_cast<std::uint8_t>(byte);
  return boolean;
}

PSRef ReadShortString(InputReader& input, ObjectHeap& heap) {
  char length = 0;
  if (!input.ReadByte(length)) return {};
  std::array<unsigned char, 255> bytes;
  const auto count = static_cast<std::size_t>(static_cast<unsigned char>(length));
  if (!input.ReadBytes(bytes.data(), count)) return {};
  PSRef string = heap.Make(PSObjectType::String);
  if (count == 0) return string;
  string->OwnParts().stringText =
      ORXString(std::string_view(reinterpret_cast<const char*>(bytes.data()), count));
  heap.UpdateCharge(*string);
  return string;
}

}  // namespace

PSRef Scanner::ReadBinaryToken() {
  char first = 0;
  if (!input.ReadByte(first)) return {};
  if (Is(first, kBeginsBinary)) {
    const PlaceHold place(input, input.Position() - 1);
    return ReadSupportedBinaryToken(static_cast<unsigned char>(first));
  }
  input.UnreadByte(first);
  return {};
}

PSRef Scanner::ReadSupportedBinaryToken(unsigned char type) {
  ObjectHeap& heap = machine.heap;
  switch (type) {
    case kInteger32HighFirst:
      return ReadInteger<4>(input, heap, std::endian::big);
    case kInteger32LowFirst:
      return ReadInteger<4>(input, heap, std::endian::little);
    case kInteger16HighFirst:
      return ReadInteger<2>(input, heap, std::endian::big);
    case kInteger16LowFirst:
      return ReadInteger<2>(input, heap, std::endian::little);
    case kInteger8:
      return ReadInteger<1>(input, heap, std::endian::big);
    case kRealHighFirst:
      return ReadReal(input, heap, std::endian::big);
    case kRealLowFirst:
      return ReadReal(input, heap, std::endian::little);
    case kBoolean:
      return ReadBoolean(input, heap);
    case kShortString:
      return ReadShortString(input, heap);
    case kSystemName: {
      char index = 0;
      if (!input.ReadByte(index)) return {};
      const OperatorRow* row = machine.operators.WithSystemName(static_cast<unsigned char>(index));
      return row ? MakeName(row->name, false) : PSRef();
    }
    default:
      return {};
  }
}

}  // namespace orxeps
