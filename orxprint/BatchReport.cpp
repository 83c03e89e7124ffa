#include "orxprint/BatchReport.h"

#include <nlohmann/json.hpp>

#include "drawing/Text.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputFile.h"

namespace orxprint {

namespace {

using orxdrawing::WithCommas;
using Json = nlohmann::ordered_json;

// "0:41" for minutes and seconds.
std::string TimeText(Clock::duration time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
  const std::string rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string_view ResultText(const DocumentResult& result) {
  if (result.isSkipped) return "skipped";
  switch (result.status) {
    case Status::FileFailed:
      return "failed";
    case Status::LimitReached:
      return "limited";
    default:
      return "done";
  }
}

}  // namespace

void BatchReport::Add(const DocumentResult& result) {
  gravest = orxprint::Gravest(gravest, result.status);
  ++(result.isSkipped ? skipped : result.status == Status::FileFailed ? failed : done);
  if (!result.losses.empty()) ++withLosses;
  if (file.empty()) return;
  Json line = {{"file", result.file},
               {"result", ResultText(result)},
               {"status", static_cast<int>(result.status)},
               {"outputs", result.outputs},
               {"losses", result.losses}};
  if (!result.problem.empty()) line["problem"] = result.problem;
  // Names of files may hold bytes that are not UTF-8.
  lines += line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

void BatchReport::TellSum(bool isWanted) const {
  if (!isWanted || Count() < 2) return;
  std::string text = WithCommas(done) + " " + std::string(verb);
  if (skipped > 0) text += ", " + WithCommas(skipped) + " left as they are";
  if (withLosses > 0) text += ", " + WithCommas(withLosses) + " with losses";
  if (failed > 0) text += ", " + WithCommas(failed) + " failed";
  Tell(text + " (" + TimeText(Clock::now() - begin) + ")");
}

Status BatchReport::Write() const {
  if (file.empty()) return gravest;
  const Outcome outcome = Attempt(file, [this] {
    OutputFile output(file);
    output.Write(lines);
    output.Close();
    output.Commit({});
    return Status::Done;
  });
  return orxprint::Gravest(gravest, outcome.status);
}

}  // namespace orxprint
