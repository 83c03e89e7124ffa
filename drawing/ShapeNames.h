// Questions about the names that a procedure may come to run: whether it draws, or writes text.
//
// Each is handed to an interpreter while it runs; they keep nothing.
#pragma once

#include <string_view>

#include "host/ORXNote.h"

namespace orxdrawing {

// What leaves something on the page; moving and measuring do not.
class ShapeTest final : public ORXNameTest {
public:
  bool Test(std::string_view name) noexcept override;
};

class TextTest final : public ORXNameTest {
public:
  bool Test(std::string_view name) noexcept override;
};

}  // namespace orxdrawing
