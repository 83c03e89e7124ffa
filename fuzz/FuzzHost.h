// The host of the fuzz targets: it reads everything that an interpreter hands it, and holds the
// interpreter to the rules of the host's interfaces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

#include "framework/CheckedHost.h"
#include "framework/InputStreams.h"
#include "tests/support/SilentGenerator.h"

namespace orxfuzz {

// Ends the run as a finding.
inline void Require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  std::abort();
}

// A document and a generator, both watched; the watch reads the arrays and samples that pass.
class FuzzHost {
public:
  explicit FuzzHost(std::string_view document) : bytes(document) {}
  FuzzHost(const FuzzHost&) = delete;
  FuzzHost& operator=(const FuzzHost&) = delete;

  orxframework::CheckedInputStream input{bytes};
  orxframework::CheckedGenerator generator{silent};

  // To be called when the interpreter is gone.
  void RequireNoViolations() {
    input.RequireClosed();
    for (const auto* log : {&input.Violations(), &generator.Violations()}) {
      if (!log->empty()) Require(false, log->front().c_str());
    }
  }

private:
  orxframework::MemoryInputStream bytes;
  orxtests::SilentGenerator silent;
};

// Takes the bytes of an input apart from its front. Behind the end come zeros.
class InputBytes {
public:
  explicit InputBytes(std::span<const std::uint8_t> input) noexcept : rest(input) {}

  std::uint8_t Byte() noexcept {
    if (rest.empty()) return 0;
    const std::uint8_t byte = rest.front();
    rest = rest.subspan(1);
    return byte;
  }
  int Word() noexcept {
    const int high = Byte();
    return high << 8 | Byte();
  }
  [[nodiscard]] std::span<const std::uint8_t> Rest() const noexcept { return rest; }
  [[nodiscard]] std::string_view Text() const noexcept {
    return {reinterpret_cast<const char*>(rest.data()), rest.size()};
  }

private:
  std::span<const std::uint8_t> rest;
};

}  // namespace orxfuzz
