// orxprint: the command-line host of the EPS print interpreter.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <variant>

#include "orxprint/CommandLine.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"

namespace {

using namespace orxprint;

Status RunCommand(const Plugin& plugin, const Request& request) {
  if (const auto* render = std::get_if<RenderOptions>(&request.command)) {
    return Render(plugin, request.common, *render);
  }
  if (const auto* info = std::get_if<InfoOptions>(&request.command)) {
    return Info(plugin, request.common, *info);
  }
  return Trace(plugin, request.common, std::get<TraceOptions>(request.command));
}

Status Work(const Request& request) {
  if (!request.common.units.empty()) {
    SetEnvironment("ORXPrintOpenPSToMM", request.common.units == "pt" ? "0" : "1");
  }
  UseBinaryStandardStreams();
  ConnectFrameworkReport(request.common.memoryLimit);
  try {
    return RunCommand(Plugin(request.common.plugin), request);
  } catch (const NoPlugin& problem) {
    Tell("the plug-in could not be loaded; tried:");
    std::fprintf(stderr, "%s\n", problem.what());
    return Status::NoPlugin;
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  Status status = Status::FileFailed;
  try {
    const auto parsed = ParseCommandLine(argumentCount, arguments);
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
