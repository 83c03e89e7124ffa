// The command plugin: checks a build of the plug-in, each check in a child process of this program.
#include <algorithm>
#include <cstdio>
#include <optional>

#include "drawing/Text.h"
#include "framework/Environment.h"
#include "orxprint/ChildProcess.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/Platform.h"
#include "orxprint/PluginChecks.h"
#include "orxprint/RunControl.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

constexpr double kUsualSeconds = 60;

// How a child says whether its check holds; its standard output has the remark or the fault.
constexpr Status kHolds = Status::Done;
constexpr Status kFails = Status::FileFailed;

std::filesystem::path FindPlugin(const std::string& file) {
  std::string tried;
  for (const std::filesystem::path& place : PluginPlaces(file)) {
    std::error_code error;
    if (std::filesystem::exists(place, error)) return place;
    tried += (tried.empty() ? "" : "\n") + place.string() + ": not there";
  }
  throw NoPlugin(tried);
}

// All checks, or those of these names.
std::vector<PluginCheck> Chosen(const std::vector<std::string>& names) {
  std::vector<PluginCheck> checks = PluginChecks();
  std::erase_if(checks, [&](const PluginCheck& each) {
    return !names.empty() && std::find(names.begin(), names.end(), each.name) == names.end();
  });
  return checks;
}

std::string Padded(std::string text) {
  constexpr std::size_t kWidth = 20;
  text.resize(std::max(kWidth, text.size() + 1), ' ');
  return text;
}

Status List() {
  StandardOutput output({});
  for (const PluginCheck& check : PluginChecks()) {
    output.Write(Padded(check.name) + check.rule + "\n");
  }
  output.RequireSuccess();
  return Status::Done;
}

// The check itself, in the process of its own.
Status RunHere(const std::filesystem::path& file, const PluginCheck& check) {
  orxframework::SetEnvironment("ORXPrintOpenPSToMM", nullptr);
  try {
    std::fputs(check.run(file).c_str(), stdout);
    return kHolds;
  } catch (const std::exception& fault) {
    std::fputs(fault.what(), stdout);
  } catch (...) {
    std::fputs("an exception comes out of it", stdout);
  }
  return kFails;
}

// Runs a check and returns whether it holds, having printed its line.
bool RunApart(const std::filesystem::path& file, const PluginCheck& check,
              std::optional<double> seconds, StandardOutput& output) {
  const ChildEnd end =
      RunChild(ProgramFile().string(),
               {"plugin", "--check", file.string(), "--only", check.name, "--in-this-process"},
               DeadlineIn(seconds));
  const auto status = static_cast<Status>(end.value);
  const bool isAnswer = end.how == ChildEnd::How::Exited && (status == kHolds || status == kFails);
  const bool holds = isAnswer && status == kHolds;
  std::string line = (holds ? "ok    " : "FAIL  ") + std::string(check.name);
  const std::string remark = isAnswer ? end.output : Describe(end);
  if (!remark.empty()) line += ": " + orxdrawing::EscapeForTerminal(remark);
  output.Write(line + "\n");
  output.RequireSuccess();
  return holds;
}

}  // namespace

Status CheckPlugin(const CommonOptions& common, const PluginOptions& options) {
  if (options.list) return List();
  const std::vector<PluginCheck> checks = Chosen(options.only);
  const std::filesystem::path file =
      FindPlugin(options.file.empty() ? common.plugin : options.file);
  if (options.inThisProcess) return RunHere(file, checks.front());
  const TimeLimit& limit = common.timeLimit;
  const std::optional<double> seconds = limit.isGiven ? limit.seconds : kUsualSeconds;
  StandardOutput output({});
  bool allHold = true;
  for (const PluginCheck& check : checks) {
    if (!RunApart(file, check, seconds, output)) allHold = false;
  }
  return allHold ? Status::Done : Status::FileFailed;
}

}  // namespace orxprint
