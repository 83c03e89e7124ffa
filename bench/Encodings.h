// How data is encoded inside documents, for writing them; the other way round from what the library
// reads.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxbench {

// Base-85 text in lines, with the end marker. No line begins with '%', which would look like a
// comment.
[[nodiscard]] std::string EncodeBase85(std::string_view bytes);

// Run-length data with the end marker.
[[nodiscard]] std::string EncodeRunLength(std::string_view bytes);

// Fax data of ITU-T T.6 for rows of pixels, true for black, all of one length.
[[nodiscard]] std::string EncodeFax(const std::vector<std::vector<bool>>& page);

// What "eexec" decrypts to `plain`: the cipher of Type 1 fonts.
[[nodiscard]] std::string EncryptForEexec(std::string_view plain);

// Hexadecimal digits in lines.
[[nodiscard]] std::string EncodeHexadecimal(std::string_view bytes);

}  // namespace orxbench
