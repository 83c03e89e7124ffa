#include "orxprint/CommandLine.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <sstream>
#include <utility>

#include "orxprint/CommandUsage.h"
#include "orxprint/Files.h"
#include "orxprint/HelpTexts.h"
#include "orxprint/Messages.h"
#include "orxprint/OptionTable.h"
#include "orxprint/OptionValues.h"
#include "orxprint/Platform.h"
#include "orxprint/Plugin.h"
#include "orxprint/StandardOutput.h"
#include "orxprint/UsageHints.h"

namespace orxprint {

namespace {

std::string VersionText() {
  std::string text = std::string("orxprint ") + ORXPRINT_VERSION;
  for (const std::filesystem::path& place : PluginPlaces({})) {
    if (StatusOf(place).kind == FileKind::Regular) return text + "\nplug-in: " + NameOf(place);
  }
  return text + "\nplug-in: none found";
}

// The command line as CLI11 sees it, filling a request.
class Parser {
public:
  Parser() : usages(MakeCommandUsages()) {
    app.set_version_flag("--version", VersionText);
    app.footer(kFooter);
    app.allow_windows_style_options(false);  // "/part.eps" names a file there, too
    app.add_flag("--option-table", showsTable, "For the manual page and completions")->group("");
    app.require_subcommand(0, 1);  // none is refused below, in better words
    common.AddTo(app);
    for (const auto& usage : usages) usage->AddTo(app, common);
  }

  std::variant<Request, Status> Parse(const std::vector<std::string>& arguments) {
    try {
      // The library takes them from the last to the first, without the program's name.
      std::vector<std::string> options(arguments.rbegin(), arguments.rend());
      if (!options.empty()) options.pop_back();
      app.parse(std::move(options));
      if (showsTable) return Answer(OptionTable(app));
      return Finish();
    } catch (const CLI::Success& help) {
      return PrintAnswer(help);
    } catch (const CLI::ParseError& error) {
      if (!TellOfUnknownCommand(app, arguments)) Tell(error.what());
      HintAtNamesWithDash(arguments);
      WriteToStandardError("Run 'orxprint --help' or 'orxprint COMMAND --help'.\n");
      return Status::WrongUsage;
    }
  }

private:
  Status PrintAnswer(const CLI::Success& help) {
    std::ostringstream text;
    app.exit(help, text, text);
    return Answer(text.str());
  }

  static Status Answer(const std::string& text) {
    StandardOutput output({});
    if (output.Write(text)) return Status::Done;
    Tell("cannot write standard output: " + ErrorText(output.Error()));
    return Status::FileFailed;
  }

  Request Finish() {
    RefuseEmptyValues(app);
    for (const CLI::App* command : app.get_subcommands()) RefuseEmptyValues(*command);
    const CommonOptions options = common.Finish();
    for (const auto& usage : usages) {
      if (usage->WasGiven()) return usage->Finish(options);
    }
    throw CLI::ParseError(
        "a command is required: render, check, info, trace, find, diff, view or plugin",
        CLI::ExitCodes::RequiredError);
  }

  CLI::App app{kDescription, "orxprint"};
  bool showsTable = false;
  CommonUsage common;
  std::vector<std::unique_ptr<CommandUsage>> usages;
};

}  // namespace

std::variant<Request, Status> ParseCommandLine(const std::vector<std::string>& arguments) {
  return Parser().Parse(arguments);
}

}  // namespace orxprint
