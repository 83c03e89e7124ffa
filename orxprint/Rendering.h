// One document of the command render on its way to its files: its pages are chosen, areas found,
// shapes drawn, and outputs written under their names when all of it is there.
#pragma once

#include <cstddef>

#include "orxprint/BatchReport.h"
#include "orxprint/CommandLine.h"
#include "orxprint/OutputNames.h"
#include "orxprint/Outputs.h"
#include "orxprint/Plugin.h"

namespace orxprint {

// Where a document goes unless its pages are numbered.
[[nodiscard]] OutputName ChooseOutput(const ListedDocument& document, const RenderOptions& options);

// Draws and writes the `number`-th document of a command, whose outputs are claimed. Tells what is
// lost, notes what came of it in the result, and throws what Attempt takes.
[[nodiscard]] Status RenderDocument(const Plugin& plugin, const CommonOptions& common,
                                    const RenderOptions& options, Outputs& outputs,
                                    const ListedDocument& document, std::size_t number,
                                    DocumentResult& result);

}  // namespace orxprint
