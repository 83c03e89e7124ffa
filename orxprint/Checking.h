// What was found while a document was drawn, made into a report: shared by the commands that judge
// a document and those that draw it.
#pragma once

#include "orxprint/CheckReport.h"
#include "orxprint/CommandLine.h"
#include "orxprint/Session.h"

namespace orxprint {

// Of a session whose drawing was judged. Finds the lines of what was found.
[[nodiscard]] CheckReport MakeReport(Session& session);

// Tells what a drawing that was judged lacks, as the options ask for it: one warning, the whole
// list, or nothing. Returns the status that this comes to.
Status TellLostContent(Session& session, const RenderOptions& options);

}  // namespace orxprint
