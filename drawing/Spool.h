// Bytes put aside until the file is complete that they belong to.
//
// A writer adds bytes while it does not know yet where they belong, remembers their place, and
// reads them back at the end. Whoever drives the writer brings the spool and owns it.
#pragma once

#include <cstdint>
#include <string_view>

#include "drawing/Picture.h"

namespace orxdrawing {

class Spool {
public:
  Spool() = default;
  virtual ~Spool() = default;
  Spool(const Spool&) = delete;
  Spool& operator=(const Spool&) = delete;

  // How many bytes there are.
  [[nodiscard]] virtual std::uint64_t Size() const = 0;
  // Both throw std::runtime_error.
  virtual void Add(std::string_view bytes) = 0;
  // Gives `count` bytes from `place` on to the sink, in blocks.
  virtual void Read(std::uint64_t place, std::uint64_t count, const ByteSink& sink) = 0;
};

}  // namespace orxdrawing
