// Decides from the page selection which objects of the document take effect.
#pragma once

#include <cstdint>

#include "plugin/ORXPrintEPSInterpreter.h"

namespace orxeps {

// With one page selected everything before the first "%%Page:" comment runs, then the selected
// page, and of each later page what follows its "showpage". `isShowPage` tells whether the object
// comes from a "showpage" token.
[[nodiscard]] inline bool TakesEffect(const ORXPrintEPSInterpreter& interpreter,
                                      bool isShowPage) noexcept {
  const std::uint32_t selected = interpreter.SelectedPage();
  const std::uint32_t page = interpreter.pageCounter;
  if (interpreter.AllPagesFlag() == 1 || page == 0) return true;
  if (selected == 0 || page < selected) return false;
  if (page == selected) return true;
  return interpreter.pageState == PageState::Shown && !isShowPage;
}

}  // namespace orxeps
