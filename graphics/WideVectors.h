// For functions whose loops work on many numbers at once: they are compiled for wider vectors as
// well, and the processor that runs them decides which are used. Every number comes out the same.
#pragma once

// Choosing needs the dynamic linker of ELF platforms; the choice is made before the sanitizers'
// libraries work.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__ELF__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#  define ORX_WIDE_VECTORS [[gnu::target_clones("avx2", "default")]]
#else
#  define ORX_WIDE_VECTORS
#endif
