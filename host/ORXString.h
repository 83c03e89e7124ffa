// Byte strings of the string library.
//
// A string is one pointer wide. The empty string owns nothing; any other points at a text that is
// shared by a plain (non-atomic) reference count, so copying one costs an increment and a string
// must stay on the thread of the object that it belongs to. Changing a string first makes its text
// its own. The hash of a text is computed once and kept beside it.
//
// Positions count from 0. Zero bytes are text like any other. Running out of memory throws
// std::bad_alloc and leaves the string as it was.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "host/ORXTextHash.h"

using ORXChar = char;

class ORXString {
public:
  ORXString() noexcept = default;
  ORXString(const char* text) : ORXString(std::string_view(text)) {}
  explicit ORXString(std::string_view text)
      : shared(text.empty() ? nullptr : SharedText::Make(text, {})) {}
  ORXString(const ORXString& other) noexcept : shared(other.shared) {
    if (shared) ++shared->holders;
  }
  ORXString(ORXString&& other) noexcept : shared(std::exchange(other.shared, nullptr)) {}
  ~ORXString() { Drop(); }

  ORXString& operator=(const ORXString& other) noexcept {
    if (other.shared) ++other.shared->holders;
    Drop();
    shared = other.shared;
    return *this;
  }
  ORXString& operator=(ORXString&& other) noexcept {
    SharedText* const taken = std::exchange(other.shared, nullptr);
    Drop();
    shared = taken;
    return *this;
  }

  [[nodiscard]] bool IsEmpty() const noexcept { return !shared; }
  [[nodiscard]] std::size_t Length() const noexcept { return shared ? shared->length : 0; }
  [[nodiscard]] std::string_view View() const noexcept {
    return shared ? std::string_view(shared->Bytes(), shared->length) : std::string_view();
  }
  // REQUIRES: position < Length().
  [[nodiscard]] ORXChar At(std::size_t position) const noexcept {
    return shared->Bytes()[position];
  }
  [[nodiscard]] std::uint32_t Hash() const noexcept {
    if (!shared) return kEmptyHash;
    if (!shared->hash) shared->hash = HashOf(View());
    return shared->hash;
  }
  // The hash that a string of this text has; never 0.
  [[nodiscard]] static std::uint32_t HashOf(std::string_view text) noexcept {
    if (text.empty()) return kEmptyHash;
    const std::uint32_t hash = ORXHashText(text.data(), text.size());
    return hash ? hash : kEmptyHash;
  }

  void Clear() noexcept {
    Drop();
    shared = nullptr;
  }
  void Append(std::string_view text) {
    if (text.empty()) return;
    Adopt(SharedText::Make(View(), text));
  }
  // Replaces one character by another without copying the text unless others share it.
  // REQUIRES: position < Length().
  void SetAt(std::size_t position, ORXChar character) {
    if (shared->holders > 1) Adopt(SharedText::Make(View(), {}));
    shared->hash = 0;
    shared->Bytes()[position] = character;
  }
  // Takes one character out. REQUIRES: position < Length().
  void RemoveAt(std::size_t position) {
    const std::string_view text = View();
    if (text.size() == 1) return Clear();
    Adopt(SharedText::Make(text.substr(0, position), text.substr(position + 1)));
  }

  friend bool operator==(const ORXString& a, const ORXString& b) noexcept {
    if (a.shared == b.shared) return true;
    if (a.Length() != b.Length()) return false;
    if (a.shared->hash && b.shared->hash && a.shared->hash != b.shared->hash) return false;
    return std::memcmp(a.shared->Bytes(), b.shared->Bytes(), a.shared->length) == 0;
  }
  // Orders by unsigned bytes; a prefix comes before what it begins.
  friend std::strong_ordering operator<=>(const ORXString& a, const ORXString& b) noexcept {
    return a.View().compare(b.View()) <=> 0;
  }

private:
  static constexpr std::uint32_t kEmptyHash = 1;

  struct SharedText {
    std::size_t length;
    std::uint32_t holders;
    mutable std::uint32_t hash;  // 0 until it is asked for

    char* Bytes() noexcept { return reinterpret_cast<char*>(this + 1); }
    const char* Bytes() const noexcept { return reinterpret_cast<const char*>(this + 1); }

    static SharedText* Make(std::string_view head, std::string_view tail) {
      const std::size_t length = head.size() + tail.size();
      void* block = ::operator new(sizeof(SharedText) + length);
      auto* text = new (block) SharedText{length, 1, 0};
      if (!head.empty()) std::memcpy(text->Bytes(), head.data(), head.size());
      if (!tail.empty()) std::memcpy(text->Bytes() + head.size(), tail.data(), tail.size());
      return text;
    }
  };

  void Adopt(SharedText* text) noexcept {
    Drop();
    shared = text;
  }
  void Drop() noexcept {
    if (shared && --shared->holders == 0) ::operator delete(shared);
  }

  SharedText* shared = nullptr;
};
