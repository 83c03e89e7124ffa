// Sample data as documents carry it, and the calls that images make, for tests of images.
//
// A test writes the data in the document's encodings and reads the samples that arrive at the
// generator; what the decoders do in between is tested by tests/framework.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tests/support/Base85.h"
#include "tests/support/Interpretation.h"

namespace orxtests {

// Run-length data of one run of different bytes, with its end.
inline std::string RunLength(std::string_view bytes) {
  return static_cast<char>(bytes.size() - 1) + std::string(bytes) + '\x80';
}

inline std::string Text(std::span<const unsigned char> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// The calls of a program, images in short: "4x2 format 0 at 10 20 pixels 2 2: <samples>".
[[nodiscard]] std::string ImagesOf(std::string_view program);

}  // namespace orxtests
