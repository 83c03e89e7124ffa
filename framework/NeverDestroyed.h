// An object that lives until the process has ended, for static variables.
//
// Workers may still draw while the process ends, and a host may ask from its own last steps, so the
// framework's state must outlast every destructor. What such an object allocates stays allocated.
#pragma once

#include <cstddef>
#include <new>

namespace orxframework {

template <typename Type>
class NeverDestroyed {
public:
  NeverDestroyed() noexcept { new (storage) Type; }
  NeverDestroyed(const NeverDestroyed&) = delete;
  NeverDestroyed& operator=(const NeverDestroyed&) = delete;

  Type& operator*() noexcept { return *std::launder(reinterpret_cast<Type*>(storage)); }
  Type* operator->() noexcept { return &**this; }

private:
  alignas(Type) std::byte storage[sizeof(Type)];
};

}  // namespace orxframework
