// The host's way of using an interpreter: built, asked or driven, and deleted, all on the thread of
// one run.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/ORXPrintInterpreter.h"
#include "orxprint/Document.h"
#include "orxprint/Plugin.h"
#include "orxprint/RunControl.h"

namespace orxprint {

// The pages that a pass draws.
struct PageSelection {
  std::uint8_t allPages = 1;
  std::uint32_t page = 0;  // matters only without allPages

  static PageSelection All() { return {}; }
  static PageSelection Only(std::uint32_t page) { return {0, page}; }
};

// Draws a document on a generator that nobody else touches until this returns. Returns why the run
// was stopped early, if it was. Throws Failure when there could be no run.
std::optional<Stop> DrawDocument(const Plugin& plugin, const Document& document,
                                 PageSelection selection, const Limits& limits,
                                 std::shared_ptr<RunControl> control,
                                 std::shared_ptr<PrintGenerator> generator);

// Lets `work` use an interpreter over the document, or over its comments alone; the work keeps
// alive whatever it refers to and changes it only inside the control's Enter.
enum class Reading { WholeDocument, CommentsOnly };
std::optional<Stop> UseInterpreter(const Plugin& plugin, const Document& document, Reading reading,
                                   const Limits& limits, std::shared_ptr<RunControl> control,
                                   std::function<void(ORXPrintInterpreter&)> work);

// The unit of everything that interpreters answer and draw, as the environment sets it now.
struct Units {
  double pointsPerUnit = 72.0 / 25.4;

  static Units FromEnvironment();
  [[nodiscard]] double MillimetresPerUnit() const { return pointsPerUnit * 25.4 / 72.0; }
};

}  // namespace orxprint
