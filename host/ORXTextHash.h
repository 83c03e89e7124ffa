// The hash of all texts, with keys that differ from process to process, so that nobody can write a
// document whose names all collide.
//
// Texts keep their hash beside them and cross from one library of a process to another, so every
// library must find the same keys without asking another one. They are made of what the operating
// system gives to each process: random bytes on Linux, elsewhere where the process has been put.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__linux__)
#  include <sys/auxv.h>
#elif defined(_WIN32)
extern "C" __declspec(dllimport) unsigned long __stdcall GetCurrentProcessId();
#else
#  include <unistd.h>
#endif
#if defined(_MSC_VER)
#  include <intrin.h>
#endif

namespace orxhash {

// The halves of a 128-bit product, combined: every bit of either factor reaches every result bit.
inline std::uint64_t FoldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
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

struct ProcessSecret {
  std::uint64_t first = 0;
  std::uint64_t second = 0;
};

// The same for every library of a process.
inline ProcessSecret SecretOfProcess() noexcept {
  ProcessSecret secret;
#if defined(__linux__)
  static_assert(sizeof secret == 16);
  // The system gives the address as a number. NOLINTNEXTLINE(performance-no-int-to-ptr)
  const auto* bytes = reinterpret_cast<const void*>(getauxval(AT_RANDOM));
  if (bytes) std::memcpy(&secret, bytes, sizeof secret);
#elif defined(_WIN32)
  // Imported, so that its address is that of the system's library and not of a piece of our own.
  secret.first = reinterpret_cast<std::uintptr_t>(&GetCurrentProcessId);
  secret.second = GetCurrentProcessId();
#else
  secret.first = reinterpret_cast<std::uintptr_t>(&getpid);
  secret.second = static_cast<std::uint64_t>(getpid());
#endif
  return secret;
}

// Both factors of the first product depend on a secret, so that differences chosen by the author of
// a document have effects that the author cannot foresee.
struct Keys {
  Keys() noexcept {
    const ProcessSecret secret = SecretOfProcess();
    std::uint64_t state = secret.first;
    const auto next = [&state, &secret] {
      state = FoldedProduct(state + 0x9E3779B97F4A7C15U, 0xD6E8FEB86659FD93U) ^ secret.second;
      return FoldedProduct(state, 0xA0761D6478BD642FU);
    };
    start = next();
    factor = next() | 1;
    finish = next() | 1;
  }

  std::uint64_t start;
  std::uint64_t factor;
  std::uint64_t finish;
};

inline std::uint64_t Load64(const char* bytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

inline std::uint64_t Load32(const char* bytes) noexcept {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Up to eight bytes as one word. Texts of one length get different words unless they are equal.
inline std::uint64_t ShortWord(const char* text, std::size_t length) noexcept {
  if (length >= 4) return Load32(text) << 32 | Load32(text + length - 4);
  if (length == 0) return 0;
  const auto byteAt = [text](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(text[i])};
  };
  return byteAt(0) << 16 | byteAt(length / 2) << 8 | byteAt(length - 1);
}

}  // namespace orxhash

// Equal bytes give equal hashes within one process.
inline std::uint32_t ORXHashText(const char* text, std::size_t length) noexcept {
  static const orxhash::Keys keys;
  std::uint64_t state = keys.start ^ length;
  if (length <= 8) {
    state = orxhash::FoldedProduct(state ^ orxhash::ShortWord(text, length), keys.factor);
  } else {
    for (std::size_t i = 0; i + 8 < length; i += 8) {
      state = orxhash::FoldedProduct(state ^ orxhash::Load64(text + i), keys.factor);
    }
    state = orxhash::FoldedProduct(state ^ orxhash::Load64(text + length - 8), keys.factor);
  }
  return static_cast<std::uint32_t>(orxhash::FoldedProduct(state ^ length, keys.finish));
}
