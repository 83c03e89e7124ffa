// The locale and the hash of all text types.
#include "host/ORXSystem.h"

#include <chrono>
#include <clocale>
#include <cstring>
#include <exception>
#include <random>

#if defined(_MSC_VER)
#  include <intrin.h>
#endif

namespace {

// The halves of a 128-bit product, combined: every bit of either factor reaches every result bit.
std::uint64_t FoldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
#if defined(_MSC_VER)
  std::uint64_t high = 0;
  const std::uint64_t low = _umul128(a, b, &high);
  return high ^ low;
#else
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product >> 64) ^ static_cast<std::uint64_t>(product);
#endif
}

// The secrets of one process. Both factors of the first product depend on a secret, so that
// differences chosen by the author of a document have effects that the author cannot foresee.
struct HashKeys {
  std::uint64_t start;
  std::uint64_t factor;
  std::uint64_t finish;
};

std::uint64_t SystemEntropy() noexcept {
  try {
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
  } catch (const std::exception&) {
    return 0;  // the clock and the addresses have to do
  }
}

HashKeys MakeHashKeys() noexcept {
  const auto ticks = std::chrono::high_resolution_clock::now().time_since_epoch().count();
  const auto place = reinterpret_cast<std::uintptr_t>(&ticks);
  std::uint64_t state = SystemEntropy() ^ static_cast<std::uint64_t>(ticks) ^ place;
  const auto next = [&state] {
    state = FoldedProduct(state + 0x9E3779B97F4A7C15U, 0xD6E8FEB86659FD93U) ^ SystemEntropy();
    return state;
  };
  return {next(), next() | 1, next() | 1};
}

std::uint64_t Load64(const char* bytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

std::uint64_t Load32(const char* bytes) noexcept {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Up to eight bytes as one word. Texts of one length get different words unless they are equal.
std::uint64_t ShortWord(const char* text, std::size_t length) noexcept {
  if (length >= 4) return Load32(text) << 32 | Load32(text + length - 4);
  if (length == 0) return 0;
  const auto byteAt = [text](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(text[i])};
  };
  return byteAt(0) << 16 | byteAt(length / 2) << 8 | byteAt(length - 1);
}

}  // namespace

int ORXSysGetLocalDecimalChar(char* separator) noexcept {
  const std::lconv* conventions = std::localeconv();
  if (!conventions || !conventions->decimal_point) return 0;
  if (std::strlen(conventions->decimal_point) != 1) return 0;
  *separator = conventions->decimal_point[0];
  return 1;
}

std::uint32_t ORXHashText(const char* text, std::size_t length) noexcept {
  static const HashKeys keys = MakeHashKeys();
  std::uint64_t state = keys.start ^ length;
  if (length <= 8) {
    state = FoldedProduct(state ^ ShortWord(text, length), keys.factor);
  } else {
    for (std::size_t i = 0; i + 8 < length; i += 8) {
      state = FoldedProduct(state ^ Load64(text + i), keys.factor);
    }
    state = FoldedProduct(state ^ Load64(text + length - 8), keys.factor);
  }
  return static_cast<std::uint32_t>(FoldedProduct(state ^ length, keys.finish));
}
