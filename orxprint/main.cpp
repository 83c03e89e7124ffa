// orxprint: the command-line host of the EPS print interpreter.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "drawing/Text.h"
#include "orxprint/CommandLine.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"
#include "orxprint/TemporaryNames.h"

namespace {

using namespace orxprint;

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Status RunCommand(const Plugin& plugin, const Request& request) {
  if (const auto* render = std::get_if<RenderOptions>(&request.command)) {
    return Render(plugin, request.common, *render);
  }
  if (const auto* check = std::get_if<CheckOptions>(&request.command)) {
    return Check(plugin, request.common, *check);
  }
  if (const auto* info = std::get_if<InfoOptions>(&request.command)) {
    return Info(plugin, request.common, *info);
  }
  if (const auto* find = std::get_if<FindOptions>(&request.command)) {
    return Find(plugin, request.common, *find);
  }
  if (const auto* diff = std::get_if<DiffOptions>(&request.command)) {
    return Diff(plugin, request.common, *diff);
  }
  return Trace(plugin, request.common, std::get<TraceOptions>(request.command));
}

Status Work(const Request& request) {
  if (request.common.units != "env") {
    SetEnvironment("ORXPrintOpenPSToMM", request.common.units == "pt" ? "0" : "1");
  }
  KeepFreedMemory();
  CatchEndingSignals();
  ConnectFrameworkReport(request.common.memoryLimit);
  try {
    if (const auto* check = std::get_if<PluginOptions>(&request.command)) {
      return CheckPlugin(request.common, *check);
    }
    if (const auto* view = std::get_if<ViewOptions>(&request.command)) {
      return View(request.common, *view);
    }
    return RunCommand(Plugin(request.common.plugin, DeadlineIn(request.common.timeLimit.seconds)),
                      request);
  } catch (const NoPlugin& problem) {
    Tell("the plug-in could not be loaded; tried:");
    for (const std::string& line : LinesOf(problem.what())) {
      WriteToStandardError(orxdrawing::EscapeForTerminal(line) + "\n");
    }
    return Status::NoPlugin;
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  Status status = Status::FileFailed;
  try {
    const auto parsed = ParseCommandLine(ProgramArguments(argumentCount, arguments));
    const auto* request = std::get_if<Request>(&parsed);
    status = request ? Work(*request) : std::get<Status>(parsed);
  } catch (const std::exception& problem) {
    Tell(problem.what());
  }
  if (!AnyRunWasLeft()) return static_cast<int>(status);
  // A thread is still inside the library: nothing that it can reach may be taken down.
  std::fflush(stdout);
  std::_Exit(static_cast<int>(status));
}
