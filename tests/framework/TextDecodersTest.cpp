// ASCII base-85 and run-length decoding: what comes out, and what is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "host/ORXRasterDecoders.h"
#include "tests/support/Base85.h"

namespace {

using namespace std::string_literals;

using Decoder = int (*)(const unsigned char*, unsigned, unsigned char*&, unsigned&, int) noexcept;

// The decoded bytes, or nothing when the decoder refuses. The input is a buffer of just its length
// and the results are no leftovers, so that a decoder that trusts either is found out.
std::optional<std::string> Decode(Decoder decoder, std::string_view text) {
  const auto input = std::make_unique<unsigned char[]>(text.size());
  std::copy(text.begin(), text.end(), input.get());
  unsigned char leftover = 0;
  unsigned char* out = &leftover;
  unsigned length = 99;
  const int status = decoder(input.get(), static_cast<unsigned>(text.size()), out, length, 0);
  if (status < 0) {
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(length, 0U);
    return std::nullopt;
  }
  if (out == &leftover) return "no buffer";
  const std::unique_ptr<unsigned char, decltype(&std::free)> owner(out, &std::free);
  return std::string(reinterpret_cast<const char*>(out), length);
}

struct Case {
  std::string encoded;
  std::optional<std::string> decoded;
};

TEST(ASCII85Decode, DecodesWhatIsWellFormedAndRefusesTheRest) {
  const std::optional<std::string> refused;
  const Case cases[] = {
      {"~>", ""},
      {" \n~>", ""},
      {"87cURD]i,\"Ebo80~>", "Hello World!"},
      {"87cUR D]i\t,\"\r\nEb\fo80\0 ~>"s, "Hello World!"},
      {"87cURD]i,\"Ebo80~>~z and what not", "Hello World!"},
      {"z~>", "\0\0\0\0"s},
      {"zz5sdq,z~>", "\0\0\0\0\0\0\0\0ABCD\0\0\0\0"s},
      {"!!!!!~>", "\0\0\0\0"s},
      {"s8W-!~>", "\xFF\xFF\xFF\xFF"},
      {"5l~>", "A"},
      {"5sb~>", "AB"},
      {"5sdp~>", "ABC"},
      {"5sdq,~>", "ABCD"},
      {"z5sb~>", "\0\0\0\0AB"s},
      {"s8N~>", "\xFF\xFF"},
      {"rr~>", "\xFF"},
      // A group above 2^32-1, whole or cut short.
      {"s8W-\"~>", refused},
      {"uuuuu~>", refused},
      {"uu~>", refused},
      // One character says nothing about a byte.
      {"5~>", refused},
      {"5sdq,5~>", refused},
      // A "z" inside a group.
      {"5z~>", refused},
      {"5sdqz,~>", refused},
      // Foreign characters.
      {"5sdq,v~>", refused},
      {"5sd\x80q,~>", refused},
      {"5sd\vq,~>", refused},
      // No end marker.
      {"", refused},
      {"5sdq,", refused},
      {"5sdq,~", refused},
      {"5sdq,~ >", refused},
      {"5sdq,>", refused},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(Decode(ASCII85Decode, each.encoded), each.decoded) << each.encoded;
  }
}

TEST(RunLengthDecode, DecodesWhatIsWellFormedAndRefusesTheRest) {
  const std::optional<std::string> refused;
  const Case cases[] = {
      {"", ""},
      {"\x80", ""},
      {"\x00"
       "a\x80"s,
       "a"},
      {"\x02"
       "abc\x80",
       "abc"},
      {"\x02"
       "abc",
       "abc"},
      {"\xFFx\x80", "xx"},
      {"\x81x\x80", std::string(128, 'x')},
      {std::string("\x7F").append(128, 'y').append("\x80"), std::string(128, 'y')},
      {"\xFEx\x01yz\xFFw\x80trailing", "xxxyzww"},
      {"\x02"
       "ab",
       refused},
      {"\x05", refused},
      {"\xFF", refused},
      {"\xFFx\x03"
       "ab",
       refused},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(Decode(RunLengthDecode, each.encoded), each.decoded)
        << testing::PrintToString(each.encoded);
  }
}

// Far more comes out than goes in, and more than any first guess.
TEST(RunLengthDecode, ResultsGrowToAnyLength) {
  std::string runs;
  std::string bytes;
  for (int i = 0; i < 3'000; ++i) {
    const auto byte = static_cast<char>(i % 251);
    runs.append(1, '\x81').append(1, byte);
    bytes.append(128, byte);
  }
  EXPECT_EQ(Decode(RunLengthDecode, runs), bytes);
}

std::string EncodeRunLength(const std::string& bytes) {
  std::string data;
  for (std::size_t i = 0; i < bytes.size();) {
    std::size_t same = 1;
    while (same < 128 && i + same < bytes.size() && bytes[i + same] == bytes[i]) ++same;
    data += same > 1 ? static_cast<char>(257 - same) : '\0';
    data += bytes[i];
    i += same;
  }
  return data + '\x80';
}

TEST(TextDecoders, GiveBackWhatWasEncoded) {
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    std::string bytes(random() % 2000, '\0');
    const unsigned symbols = 1 + random() % 256;
    for (char& byte : bytes) byte = static_cast<char>(random() % symbols);
    ASSERT_EQ(Decode(ASCII85Decode, orxtests::Base85(bytes)), bytes);
    ASSERT_EQ(Decode(RunLengthDecode, EncodeRunLength(bytes)), bytes);
  }
}

}  // namespace
