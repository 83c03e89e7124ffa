#include "ps/BinaryTokens.h"

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "ps/CharacterClass.h"
#include "ps/InputBytes.h"
#include "ps/OperatorTable.h"

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

// Reads exactly `count` bytes; false when the input fails or ends before.
bool ReadBytes(ORXPrintEPSInterpreter& interpreter, unsigned char* bytes, int count) {
  int countRead = 0;
  if (interpreter.inputStream->Read(bytes, count, &countRead) < 0 || countRead != count) {
    return false;
  }
  interpreter.scanner.bytesRead += static_cast<std::uint64_t>(count);
  return true;
}

// An unsigned number of `Size` bytes.
template <int Size>
bool ReadNumber(ORXPrintEPSInterpreter& interpreter, std::endian order, std::uint32_t& number) {
  std::array<unsigned char, Size> bytes{};
  if (!ReadBytes(interpreter, bytes.data(), Size)) return false;
  number = 0;
  for (int i = 0; i < Size; ++i) {
    const auto place = static_cast<std::size_t>(order == std::endian::big ? i : Size - 1 - i);
    number = number << 8 | bytes[place];
  }
  return true;
}

template <int Size>
PSRef ReadInteger(ORXPrintEPSInterpreter& interpreter, std::endian order) {
  std::uint32_t number = 0;
  if (!ReadNumber<Size>(interpreter, order, number)) return {};
  constexpr int kUnusedBits = 32 - 8 * Size;
  PSRef integer = interpreter.heap.Make(PSObjectType::Integer);
  // Shifting up and back extends the sign.
  integer->intValue = static_cast<std::int32_t>(number << kUnusedBits) >> kUnusedBits;
  return integer;
}

PSRef ReadReal(ORXPrintEPSInterpreter& interpreter, std::endian order) {
  std::uint32_t bits = 0;
  if (!ReadNumber<4>(interpreter, order, bits)) return {};
  PSRef real = interpreter.heap.Make(PSObjectType::Real);
  real->realValue = std::bit_cast<float>(bits);
  return real;
}

PSRef ReadBoolean(ORXPrintEPSInterpreter& interpreter) {
  char byte = 0;
  if (!ReadInputByte(interpreter, byte)) return {};
  PSRef boolean = interpreter.heap.Make(PSObjectType::Boolean);
  boolean->boolValue = static_cast<std::uint8_t>(byte);
  return boolean;
}

PSRef ReadShortString(ORXPrintEPSInterpreter& interpreter) {
  char length = 0;
  if (!ReadInputByte(interpreter, length)) return {};
  std::array<unsigned char, 255> bytes;
  const int count = static_cast<unsigned char>(length);
  if (count > 0 && !ReadBytes(interpreter, bytes.data(), count)) return {};
  PSRef string = interpreter.heap.Make(PSObjectType::String);
  string->stringText = ORXString(std::string_view(reinterpret_cast<const char*>(bytes.data()),
                                                  static_cast<std::size_t>(count)));
  interpreter.heap.UpdateCharge(*string);
  return string;
}

PSRef ReadSystemName(ORXPrintEPSInterpreter& interpreter) {
  char index = 0;
  if (!ReadInputByte(interpreter, index)) return {};
  const OperatorRow* row = FindSystemName(static_cast<unsigned char>(index));
  if (!row) return {};
  PSRef name = interpreter.heap.Make(PSObjectType::Name);
  name->nameText = interpreter.names.Intern(row->name);
  name->literal = 0;
  return name;
}

}  // namespace

PSRef ReadBinaryToken(ORXPrintEPSInterpreter& interpreter) {
  if (!interpreter.inputStream) return {};
  char first = 0;
  if (!ReadInputByte(interpreter, first)) return {};
  if (!ClassOf(first).beginsBinary) {
    interpreter.inputStream->UnreadByte(first);
    return {};
  }
  switch (static_cast<unsigned char>(first)) {
    case kInteger32HighFirst:
      return ReadInteger<4>(interpreter, std::endian::big);
    case kInteger32LowFirst:
      return ReadInteger<4>(interpreter, std::endian::little);
    case kInteger16HighFirst:
      return ReadInteger<2>(interpreter, std::endian::big);
    case kInteger16LowFirst:
      return ReadInteger<2>(interpreter, std::endian::little);
    case kInteger8:
      return ReadInteger<1>(interpreter, std::endian::big);
    case kRealHighFirst:
      return ReadReal(interpreter, std::endian::big);
    case kRealLowFirst:
      return ReadReal(interpreter, std::endian::little);
    case kBoolean:
      return ReadBoolean(interpreter);
    case kShortString:
      return ReadShortString(interpreter);
    case kSystemName:
      return ReadSystemName(interpreter);
    default:
      return {};
  }
}

}  // namespace orxeps
