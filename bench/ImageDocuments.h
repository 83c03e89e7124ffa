// Documents that consist of images, for bench/Documents.h: each has at least one.
//
// They are made in memory, of about as many bytes as asked for, from a sequence of random numbers
// that is the same on every machine.
#pragma once

#include <cstddef>
#include <string>

namespace orxbench {

// Grey samples of 8 bits in base-85.
[[nodiscard]] std::string GreyImages(std::size_t bytes);

// The same in run-length data.
[[nodiscard]] std::string RunLengthImages(std::size_t bytes);

// Three sources, each with a block of run-length data of its own for every row.
[[nodiscard]] std::string ColourImages(std::size_t bytes);

// Scanned pages of 1 bit in fax data.
[[nodiscard]] std::string FaxImages(std::size_t bytes);

}  // namespace orxbench
