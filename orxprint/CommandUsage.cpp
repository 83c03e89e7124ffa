#include "orxprint/CommandUsage.h"

#include <limits>
#include <utility>

#include "orxprint/HelpTexts.h"
#include "orxprint/OptionValues.h"
#include "orxprint/PluginChecks.h"

namespace orxprint {

void CommonUsage::AddTo(CLI::App& command) {
  command
      .add_option("--units", options.units,
                  "Unit of coordinates inside the interpreter; env: as the plug-in's variable says")
      ->type_name("mm|pt|env")
      ->check(CLI::IsMember({"mm", "pt", "env"}));
  command.add_option("--plugin", options.plugin, "The plug-in's file")->type_name("PATH");
  command
      .add_option("--memory-limit", memoryLimit,
                  "Memory to use at most, in bytes or with K, M or G")
      ->type_name("SIZE");
  command
      .add_option("--time-limit", timeLimit,
                  "Stop work on each file after this time; without it, interpreting after 300 s")
      ->type_name("SECONDS|none");
}

void CommonUsage::AddTimeLimitTo(CLI::App& command, const char* description) {
  command.add_option("--time-limit", timeLimit, description)->type_name("SECONDS|none");
}

CommonOptions CommonUsage::Finish() const {
  CommonOptions finished = options;
  if (!memoryLimit.empty()) finished.memoryLimit = ParseSize(memoryLimit);
  if (!timeLimit.empty()) finished.timeLimit = ParseTimeLimit(timeLimit);
  return finished;
}

CLI::App& CommandUsage::Add(CLI::App& app, const char* name, const char* description,
                            const char* footer) {
  command = app.add_subcommand(name, description);
  command->footer(footer);
  return *command;
}

void CommandUsage::AddPages(const char* description) {
  command->add_option("--pages,--page", pages, description)->type_name("LIST");
}

void CommandUsage::AddFiles(std::vector<std::string>& files, const char* description) {
  command->add_option("FILE", files, description)->required();
}

void CommandUsage::AddBatch(DocumentChoice& choice, unsigned& jobs, std::string& report,
                            const char* description) {
  command->add_option("FILE", choice.names, description);
  command->add_flag("-R,--recursive", choice.takesFolders, "Take folders, with all in them");
  command
      ->add_option("--files0-from", choice.namesFrom,
                   "Take the names in this file as well, each ended by a zero byte; -: from input")
      ->type_name("FILE|-");
  command->add_option("--jobs", jobs, "Documents at work at once, at most (the cores)")
      ->type_name("NUMBER")
      ->check(NumberFrom(1, kMostJobs));
  command->add_option("--shard", shard, "Take every COUNTth document, from this one on")
      ->type_name("NUMBER/COUNT");
  command->add_option("--report", report, "Write a line of JSON for each document")
      ->type_name("OUT.jsonl");
}

void CommandUsage::FinishBatch(DocumentChoice& choice) const {
  if (choice.names.empty() && choice.namesFrom.empty()) {
    throw CLI::ParseError("FILE is required", CLI::ExitCodes::RequiredError);
  }
  std::vector<std::string> readers = choice.names;
  readers.push_back(choice.namesFrom);
  RequireOneStandardInput(readers);
  if (!shard.empty()) choice.shard = ParseShard(shard);
}

namespace {

class CheckUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& check =
        Add(app, "check", "Tell what will be lost or differ, and where", kCheckFooter);
    common.AddTo(check);
    AddBatch(options.documents, options.jobs, options.report,
             "Documents to check, or folders with -R");
    CLI::Option* json = check.add_flag("--json", options.json, "Print for programs");
    check.add_option("--html", options.html, "Write a page with pictures instead")
        ->type_name("OUT")
        ->excludes(json);
    AddPages("Look at these pages only: 1,3-5,7-");
  }

  Request Finish(const CommonOptions& common) override {
    FinishBatch(options.documents);
    options.pages = ParsePages(pages);
    return {common, options};
  }

private:
  CheckOptions options;
};

class InfoUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& info = Add(app, "info", "Print pages, sizes, labels and statistics", kInfoFooter);
    common.AddTo(info);
    AddFiles(options.files, "Documents to describe");
    info.add_flag("--json", options.json, "Print for programs");
    info.add_flag("--quick", options.quick, "Read the comments only, run no PostScript");
  }

  Request Finish(const CommonOptions& common) override {
    RequireOneStandardInput(options.files);
    return {common, options};
  }

private:
  InfoOptions options;
};

class TraceUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& trace = Add(app, "trace", "Print every drawing call", kTraceFooter);
    common.AddTo(trace);
    AddFiles(options.files, "Documents to trace");
    auto* page = trace.add_option("--page", options.page,
                                  "Select this page only, whether it is there or not");
    page->type_name("N")->check(NumberFrom(0, std::numeric_limits<std::uint32_t>::max()));
    trace.add_option("--pages", pages, "Trace these pages in turn: 1,3-5,7-")
        ->type_name("LIST")
        ->excludes(page);
    auto* only = trace.add_option("--only", calls, "Print these calls only");
    only->type_name("CALLS")->delimiter(',');
    auto* samples =
        trace.add_flag("--samples", options.samples, "Print the samples of images as well");
    auto* where = trace.add_flag("--where", options.where, "Say of each call which line drew it");
    trace
        .add_flag("--summary", options.summary,
                  "Print counts, extent, widths, colours of each page")
        ->excludes(only)
        ->excludes(samples)
        ->excludes(where);
    trace.add_flag("--json", options.json, "Print an object a line, for programs");
  }

  Request Finish(const CommonOptions& common) override {
    RequireOneStandardInput(options.files);
    options.pages = ParsePages(pages);
    options.calls = ParseCalls(calls);
    return {common, options};
  }

private:
  TraceOptions options;
  std::vector<std::string> calls;
};

class FindUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& find = Add(app, "find", "Tell which lines drew what is at a place", kFindFooter);
    common.AddTo(find);
    find.add_option("FILE", options.file, "Document to look into")->required();
    find.add_option("--at", place, "The place on the paper")->type_name("X,Y[mm|pt]")->required();
    find.add_option("--within", options.withinMillimetres,
                    "Take what is so near as well, in mm (0.1)")
        ->type_name("MM")
        ->check(NumberFrom(0, kMostWithinMillimetres));
    AddPages("Look at these pages only: 1,3-5,7-");
    find.add_flag("--json", options.json, "Print for programs");
  }

  Request Finish(const CommonOptions& common) override {
    const std::optional<PlaceOption> parsed = ParsePlace(place);
    if (!parsed) Refuse("--at", place, "a place such as 12.5,80 or 35,227pt");
    options.place = *parsed;
    options.pages = ParsePages(pages);
    return {common, options};
  }

private:
  FindOptions options;
  std::string place;
};

class DiffUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& diff = Add(app, "diff", "Tell what differs between two drawings", kDiffFooter);
    common.AddTo(diff);
    diff.add_option("BEFORE", options.before, "The one document")->required();
    diff.add_option("AFTER", options.after, "The other document")->required();
    diff.add_option("-o,--output", options.output, "Draw what differs, as SVG, PDF or PNG")
        ->type_name("OUT");
    diff.add_option("-r,--resolution", options.dotsPerInch, "Dots per inch of a PNG (150)")
        ->type_name("DPI")
        ->check(NumberFrom(kLeastDotsPerInch, kMostDotsPerInch));
    diff.add_option("--tolerance", options.toleranceMillimetres,
                    "Take coordinates so near for the same, in mm (0.001)")
        ->type_name("MM")
        ->check(NumberFrom(0, kMostWithinMillimetres));
    AddPages("Look at these pages only: 1,3-5,7-");
    diff.add_flag("--json", options.json, "Print for programs");
  }

  Request Finish(const CommonOptions& common) override {
    RequireOneStandardInput({options.before, options.after});
    options.pages = ParsePages(pages);
    if (options.output.empty()) return {common, options};
    options.format = FormatOfFile(options.output);
    if (options.format) return {common, options};
    throw CLI::ValidationError("--output", "the ending of '" + options.output +
                                               "' says no format: use .svg, .pdf or .png");
  }

private:
  DiffOptions options;
};

class ViewUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& view =
        Add(app, "view", "Show documents in a browser, with their source", kViewFooter);
    AddFiles(options.files, "Documents to show");
    view.add_option("-o,--output", options.output, "Where the page goes")->type_name("OUT.html");
    view.add_flag("--no-open", options.noOpen, "Start no browser: print the page's name");
    common.AddTimeLimitTo(view, "Time for each file to be read");
  }

  Request Finish(const CommonOptions& common) override {
    RequireOneStandardInput(options.files);
    if (!common.units.empty() || !common.plugin.empty() || common.memoryLimit != 0) {
      throw CLI::ValidationError("view", "--units, --plugin and --memory-limit do nothing here");
    }
    return {common, options};
  }

private:
  ViewOptions options;
};

// Nothing when there is a check of that name.
std::string ComplainOfCheck(const std::string& name) {
  for (const PluginCheck& check : PluginChecks()) {
    if (name == check.name) return {};
  }
  return "'" + name + "' is no check: see orxprint plugin --list";
}

class PluginUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& plugin = Add(app, "plugin", "Check a build of the plug-in", kPluginFooter);
    plugin.add_option("--check", options.file, "Check this one, or the usual one")
        ->type_name("[PATH]")
        ->expected(0, 1);
    plugin.add_flag("--list", options.list, "Print the checks and what they look at");
    plugin.add_option("--only", options.only, "Make these checks only, names with commas")
        ->type_name("NAME")
        ->delimiter(',')
        ->check(ComplainOfCheck);
    common.AddTimeLimitTo(plugin, "Time for each check");
    plugin.add_flag("--in-this-process", options.inThisProcess)->group("");
  }

  Request Finish(const CommonOptions& common) override {
    if (command->count("--check") == 0 && !options.list) {
      throw CLI::ParseError("plugin: --check or --list is required", CLI::ExitCodes::RequiredError);
    }
    if (!common.units.empty() || common.memoryLimit != 0) {
      throw CLI::ValidationError("plugin", "--units and --memory-limit do nothing here");
    }
    return {common, options};
  }

private:
  PluginOptions options;
};

}  // namespace

std::vector<std::unique_ptr<CommandUsage>> MakeCommandUsages() {
  std::vector<std::unique_ptr<CommandUsage>> usages;
  usages.push_back(MakeRenderUsage());
  usages.push_back(std::make_unique<CheckUsage>());
  usages.push_back(std::make_unique<InfoUsage>());
  usages.push_back(std::make_unique<TraceUsage>());
  usages.push_back(std::make_unique<FindUsage>());
  usages.push_back(std::make_unique<DiffUsage>());
  usages.push_back(std::make_unique<ViewUsage>());
  usages.push_back(std::make_unique<PluginUsage>());
  return usages;
}

}  // namespace orxprint
