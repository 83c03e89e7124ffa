// The command view: the page for browsers with documents inside.
#include <filesystem>
#include <optional>
#include <random>

#include "orxprint/Commands.h"
#include "orxprint/DocumentSource.h"
#include "orxprint/Files.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputFile.h"
#include "orxprint/Outputs.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"
#include "orxprint/StandardOutput.h"
#include "orxprint/ViewPage.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

std::string ShownName(const std::string& name) {
  return name == "-" ? "standard input" : NameOf(PathOf(name).filename());
}

// Puts documents into the page one after the other, as they are or with what they draw.
class PageWriter {
public:
  // The plug-in is none for a page with the interpreter inside.
  PageWriter(OutputFile& outputFile, const CommonOptions& commonOptions,
             const Plugin* drawingPlugin)
      : output(outputFile), common(commonOptions), plugin(drawingPlugin) {}

  Status Add(const std::string& file) {
    return Attempt(file, [&] { return plugin ? AddDrawn(file) : AddAsItIs(file); }).status;
  }
  // Whether no document could be added.
  [[nodiscard]] bool IsEmpty() const { return isEmpty; }

private:
  Status AddAsItIs(const std::string& file) {
    RunControl control(DeadlineIn(common.timeLimit.Given()));
    DocumentSource source(file, control);
    WriteDocument(output, ShownName(file),
                  [&source](std::uint64_t place, char* buffer, std::size_t count) {
                    return source.Read(place, buffer, count);
                  });
    source.Require();
    isEmpty = false;
    return Status::Done;
  }

  // Of a file with a preview in front the PostScript section, where places and lines count.
  Status AddDrawn(const std::string& file) {
    Session session(*plugin, common, file);
    const DrawnDocument drawn = DrawDocument(session);
    WriteDocument(output, ShownName(file),
                  [&session](std::uint64_t place, char* buffer, std::size_t count) {
                    return session.Source().Read(place, buffer, count);
                  });
    WriteDrawing(output, drawn);
    isEmpty = false;
    return session.TellShortfalls();
  }

  OutputFile& output;
  const CommonOptions& common;
  const Plugin* plugin;
  bool isEmpty = true;
};

// In a folder of its own that nobody else can look into, for it stays when this program ends.
std::string TemporaryPage() {
  std::random_device random;
  std::string name = "orxprint-";
  for (int i = 0; i < 4; ++i) name += std::to_string(random());
  const fs::path folder = TemporaryFolder() / name;
  std::error_code error;
  if (!fs::create_directory(folder, error)) {
    throw Failure("no folder can be made for the page: " + error.message());
  }
  fs::permissions(folder, fs::perms::owner_all, error);
  return NameOf(folder / "orxprint.html");
}

Status WritePage(const CommonOptions& common, const std::vector<std::string>& files,
                 const std::string& name, const ViewTemplate& page, const Plugin* plugin) {
  std::vector<ListedDocument> documents;
  documents.reserve(files.size());
  for (const std::string& file : files) documents.push_back({file, {}, {}});
  Outputs(documents).Claim(name, 0);
  OutputFile output(name);
  output.Write(page.front);
  PageWriter writer(output, common, plugin);
  Status gravest = Status::Done;
  for (const std::string& file : files) gravest = Gravest(gravest, writer.Add(file));
  if (writer.IsEmpty()) return gravest;
  output.Write(page.rest);
  output.Close();
  output.Commit(DeadlineIn(common.timeLimit.Given()));
  return gravest;
}

void Show(const std::string& name, const ViewOptions& options) {
  if (options.noOpen) {
    StandardOutput output({});
    output.Write(name + "\n");
    output.RequireSuccess();
  } else if (!ShowOnDesktop(AbsolutePath(PathOf(name)))) {
    throw Failure("no browser could be started; the page is " + name);
  }
}

}  // namespace

Status View(const CommonOptions& common, const ViewOptions& options) {
  const bool isTemporary = options.output.empty();
  const std::string about = isTemporary ? "view" : options.output;
  ViewTemplate page;
  const Outcome reading = Attempt(about, [&page] {
    page = ReadViewTemplate();
    return Status::Done;
  });
  if (reading.status != Status::Done) return reading.status;
  std::optional<Plugin> plugin;
  if (!page.hasInterpreter) {
    plugin.emplace(common.plugin, DeadlineIn(common.timeLimit.seconds));
    Warn(about, "made without the interpreter: it shows these drawings and opens no other files");
  }
  const Outcome outcome = Attempt(about, [&] {
    const std::string name = isTemporary ? TemporaryPage() : options.output;
    const Status status = WritePage(common, options.files, name, page, plugin ? &*plugin : nullptr);
    if (isTemporary && StatusOf(PathOf(name)).kind == FileKind::Regular) Show(name, options);
    return status;
  });
  return outcome.status;
}

}  // namespace orxprint
