#include "orxprint/Batch.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "drawing/ParallelWork.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

// Names of files may hold bytes that are not UTF-8; the binary form takes them as they are.
using Json = nlohmann::json;

std::string Packed(const DocumentAnswer& answer, const std::string& messages) {
  const DocumentResult& result = answer.result;
  const Json packed =
      Json::array({result.file, static_cast<int>(result.status), result.isSkipped, result.problem,
                   result.outputs, result.losses, answer.text, messages});
  std::string bytes;
  Json::to_msgpack(packed, bytes);
  return bytes;
}

// The answer, and the messages that belong to it.
std::pair<DocumentAnswer, std::string> Unpacked(const std::string& bytes) {
  const Json packed = Json::from_msgpack(bytes);
  DocumentAnswer answer;
  answer.result = {packed[0].get<std::string>(),
                   static_cast<Status>(packed[1].get<int>()),
                   packed[2].get<bool>(),
                   packed[3].get<std::string>(),
                   packed[4].get<std::vector<std::string>>(),
                   packed[5].get<std::vector<std::string>>()};
  answer.text = packed[6].get<std::string>();
  return {std::move(answer), packed[7].get<std::string>()};
}

DocumentAnswer FailedAnswer(const std::string& file, const std::string& problem) {
  DocumentAnswer answer;
  answer.result.file = file;
  answer.result.status = Status::FileFailed;
  answer.result.problem = problem;
  Tell(file, problem);
  return answer;
}

DocumentAnswer WorkOn(const Batch& batch, std::size_t number) {
  const ListedDocument& document = batch.documents[number];
  if (!document.problem.empty()) return FailedAnswer(document.name, document.problem);
  return batch.work(number);
}

std::string WorkApart(const Batch& batch, std::size_t document) {
  const MessageCapture capture;
  const DocumentAnswer answer = WorkOn(batch, document);
  return Packed(answer, capture.Text());
}

std::vector<Chain> AllChains(const Batch& batch) {
  if (!batch.chains.empty()) return batch.chains;
  std::vector<Chain> chains(batch.documents.size());
  for (std::size_t i = 0; i < chains.size(); ++i) chains[i] = {i};
  return chains;
}

bool IsAlone(const Batch& batch) { return batch.documents.size() < 2 || !MayShareOut(); }

}  // namespace

unsigned JobsOf(const Batch& batch) {
  if (IsAlone(batch)) return 1;
  const unsigned wanted = batch.jobs > 0 ? batch.jobs : orxdrawing::CoreCount();
  return static_cast<unsigned>(std::min<std::size_t>(wanted, AllChains(batch).size()));
}

void DoBatch(const Batch& batch, BatchReport& report) {
  const auto take = [&](const DocumentAnswer& answer) {
    report.Add(answer.result);
    return batch.take(answer);
  };
  if (batch.jobs > 1 && !MayShareOut()) Tell("one document is done at a time on this system");
  if (IsAlone(batch)) {
    bool goesOn = true;
    for (std::size_t i = 0; goesOn && i < batch.documents.size(); ++i)
      goesOn = take(WorkOn(batch, i));
    return;
  }
  BatchProgress progress(batch.documents.size());
  SharedWork shared;
  shared.chains = AllChains(batch);
  shared.workers = JobsOf(batch);
  shared.work = [&batch](std::size_t document) { return WorkApart(batch, document); };
  shared.take = [&](std::size_t document, const std::optional<std::string>& bytes,
                    const ChildEnd& end) {
    progress.Wipe();
    if (!bytes) {
      return take(FailedAnswer(batch.documents[document].name,
                               "the process that worked on it ended: " + Describe(end)));
    }
    const auto [answer, messages] = Unpacked(*bytes);
    WriteMessages(messages);
    return take(answer);
  };
  shared.onWait = [&] { progress.Show(report.Count(), report.FailedCount()); };
  ShareOut(shared);
}

}  // namespace orxprint
