// Runs a document that nobody should have written, the way a careful host would notice harm: on a
// thread with a small stack, with every call on the host's interfaces watched, with the growth of
// the process measured and the objects counted that are left behind.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace orxtests {

struct HostileRun {
  std::string error;               // the error raised last, or an empty text
  std::string violation;           // a rule of the host's interfaces that was broken, if one was
  bool wentOn = false;             // what was appended to the document was interpreted
  std::size_t objectsLeft = 0;     // after the stacks and dictionaries were released
  std::size_t megabytesGrown = 0;  // at the peak; 0 where the platform does not tell
};

enum class Passes { Drawing, DrawingAndCounting };

// Runs passes over a document, all by one interpreter.
[[nodiscard]] HostileRun RunPasses(std::string_view document, Passes passes);

// Both passes on a small stack and measured, with something to draw appended to the document.
[[nodiscard]] HostileRun RunHostile(std::string document);

// Runs a function on a thread that has a stack of 1 MiB, and waits for it.
void OnSmallStack(const std::function<void()>& work);

// A text many times over.
[[nodiscard]] std::string Repeated(std::size_t count, std::string_view text);

}  // namespace orxtests
