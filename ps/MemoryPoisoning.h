// Tells the address sanitizer which pooled memory nobody may touch, so that using an object after
// its destruction is found although its memory is never given back. Without the sanitizer this is
// nothing.
#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#  define ORXEPS_HAS_ASAN 1
#elif defined(__has_feature)
#  if __has_feature(address_sanitizer)
#    define ORXEPS_HAS_ASAN 1
#  endif
#endif

#if defined(ORXEPS_HAS_ASAN)
#  include <sanitizer/asan_interface.h>
#endif

namespace orxeps {

inline void PoisonMemory([[maybe_unused]] const volatile void* memory,
                         [[maybe_unused]] std::size_t size) noexcept {
#if defined(ORXEPS_HAS_ASAN)
  __asan_poison_memory_region(memory, size);
#endif
}

inline void UnpoisonMemory([[maybe_unused]] const volatile void* memory,
                           [[maybe_unused]] std::size_t size) noexcept {
#if defined(ORXEPS_HAS_ASAN)
  __asan_unpoison_memory_region(memory, size);
#endif
}

}  // namespace orxeps
