#include "orxprint/PageChoice.h"

#include <algorithm>

namespace orxprint {

namespace {

// As stated, or as many as there are page comments; a document without any is one page.
std::uint32_t PageCountOf(Session& session) {
  const std::uint32_t stated = session.Ask().count.value_or(0);
  if (session.Stopping()) throw Stopped{*session.Stopping()};
  return stated > 0 ? stated : std::max(session.Source().Comments().pageComments, 1U);
}

}  // namespace

std::vector<PageSelection> ChoosePasses(Session& session, const std::optional<PageList>& pages) {
  if (!pages) return {PageSelection::All()};
  std::vector<PageSelection> passes;
  for (const std::uint32_t page : SelectPages(*pages, PageCountOf(session))) {
    passes.push_back(PageSelection::Only(page));
  }
  return passes;
}

}  // namespace orxprint
