// The command render: documents drawn into files.
#include <algorithm>
#include <string>
#include <vector>

#include "drawing/ParallelWork.h"
#include "orxprint/Batch.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputChains.h"
#include "orxprint/Rendering.h"

namespace orxprint {

namespace {

std::vector<Chain> ChainsByOutput(const std::vector<ListedDocument>& documents,
                                  const RenderOptions& options) {
  if (!options.format->WritesFiles()) return {};
  std::vector<std::string> outputs;
  outputs.reserve(documents.size());
  for (const ListedDocument& document : documents) {
    outputs.push_back(ChooseOutput(document, options).Whole());
  }
  return ChainsOf(outputs, options.format->pages == PagesInFile::One);
}

}  // namespace

Status Render(const Plugin& plugin, const CommonOptions& common, const RenderOptions& options) {
  BatchReport report("drawn", options.report);
  Batch batch;
  batch.documents = ListDocuments(options.documents);
  batch.jobs = options.jobs;
  batch.chains = ChainsByOutput(batch.documents, options);
  RenderOptions each = options;
  each.pixels.workers = std::max(1U, orxdrawing::CoreCount() / JobsOf(batch));
  Outputs outputs(batch.documents);
  batch.work = [&](std::size_t i) {
    DocumentAnswer answer;
    DocumentResult& result = answer.result;
    result.file = batch.documents[i].name;
    const Outcome outcome = Attempt(result.file, [&] {
      return RenderDocument(plugin, common, each, outputs, batch.documents[i], i, result);
    });
    result.status = outcome.status;
    result.problem = outcome.problem;
    return answer;
  };
  batch.take = [](const DocumentAnswer&) { return true; };
  DoBatch(batch, report);
  report.TellSum(options.telling != Telling::ErrorsOnly);
  return report.Write();
}

}  // namespace orxprint
