// An owned reference to an object, or nothing. Move-only: a second owner is made with Retain. A raw
// PSObject* is always borrowed.
#pragma once

#include <utility>

namespace orxeps {

class PSObject;

class [[nodiscard]] PSRef {
public:
  PSRef() noexcept = default;
  PSRef(PSRef&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
  PSRef& operator=(PSRef&& other) noexcept;
  ~PSRef();

  // Takes over a reference that the caller owns.
  static PSRef Adopt(PSObject* owned) noexcept { return PSRef(owned); }
  // Adds a reference to a borrowed object.
  static PSRef Retain(PSObject* borrowed) noexcept;
  // Hands the reference to a container.
  [[nodiscard]] PSObject* Leak() noexcept { return std::exchange(object, nullptr); }

  [[nodiscard]] PSObject* Get() const noexcept { return object; }
  PSObject* operator->() const noexcept { return object; }
  PSObject& operator*() const noexcept { return *object; }
  explicit operator bool() const noexcept { return object != nullptr; }

private:
  explicit PSRef(PSObject* owned) noexcept : object(owned) {}

  PSObject* object = nullptr;
};

}  // namespace orxeps
