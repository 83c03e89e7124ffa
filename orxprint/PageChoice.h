// The passes that draw the pages which the person chose.
//
// For commands that draw page by page; the session is asked how many there are, once.
#pragma once

#include <optional>
#include <vector>

#include "orxprint/PageList.h"
#include "orxprint/Session.h"

namespace orxprint {

// One pass for all pages, or one for each page of the list. Throws Failure when the list names a
// page that the document does not have; Stopped when it was not known how many there are.
[[nodiscard]] std::vector<PageSelection> ChoosePasses(Session& session,
                                                      const std::optional<PageList>& pages);

}  // namespace orxprint
