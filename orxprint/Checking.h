// What was found while a document was drawn, made into a report: shared by the commands that judge
// a document and those that draw it.
#pragma once

#include "orxprint/CheckReport.h"
#include "orxprint/CommandLine.h"
#include "orxprint/Session.h"

namespace orxprint {

// Of a session whose drawing was judged. Finds the lines of what was found.
[[nodiscard]] CheckReport MakeReport(Session& session);

// The names of what can be seen of it, the gravest first, each once.
[[nodiscard]] std::vector<std::string> KindsIn(const CheckReport& report);

// Tells what a drawing that was judged lacks, as the options ask for it: one warning, the whole
// list, or nothing.
struct LostContent {
  Status status = Status::Done;
  std::vector<std::string> kinds;  // that can be seen, the gravest first
};
LostContent TellLostContent(Session& session, const RenderOptions& options);

}  // namespace orxprint
