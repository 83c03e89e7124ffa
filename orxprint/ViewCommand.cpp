// The command view: the page for browsers with documents inside.
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>

#include "drawing/Base64.h"
#include "orxprint/Commands.h"
#include "orxprint/DocumentSource.h"
#include "orxprint/Files.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputFile.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPageName = "orxprint.html";
// Documents stand in front of this.
constexpr std::string_view kMark = "<script type=\"text/plain\" id=\"worker\">";
constexpr std::size_t kBlockBytes = 48 << 10;

// As it is installed, or as it is built beside this program.
std::string ReadPage() {
  const fs::path folder = ProgramFile().parent_path();
  for (const char* place : {ORXPRINT_PAGE_FOLDER, "../../web/bin"}) {
    std::ifstream file(folder / place / kPageName, std::ios::binary);
    if (!file) continue;
    std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (page.find(kMark) != std::string::npos) return page;
  }
  throw Failure("this installation has no " + std::string(kPageName) +
                ", which is made by: cmake --preset web && cmake --build --preset web");
}

std::string EscapeForAttribute(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

void WriteDocument(const std::string& name, RunControl& control, OutputFile& output) {
  DocumentSource source(name, control);
  const std::string shown = name == "-" ? "standard input" : NameOf(PathOf(name).filename());
  output.Write("<script type=\"text/plain\" class=\"document\" data-name=\"" +
               EscapeForAttribute(shown) + "\">");
  orxdrawing::Base64Encoder letters;
  const auto buffer = std::make_unique<std::array<char, kBlockBytes>>();
  for (std::uint64_t place = 0; place < source.Size();) {
    const std::size_t count = source.Read(place, buffer->data(), buffer->size());
    if (count == 0) break;
    output.Write(letters.Add({buffer->data(), count}));
    place += count;
  }
  output.Write(letters.Finish() + "</script>\n");
  source.Require();
}

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
  return NameOf(folder / kPageName);
}

Status WritePage(const CommonOptions& common, const std::vector<std::string>& files,
                 const std::string& name) {
  const std::string page = ReadPage();
  const std::size_t mark = page.find(kMark);
  OutputFile output(name);
  output.Write(std::string_view(page).substr(0, mark));
  Status gravest = Status::Done;
  bool isEmpty = true;
  for (const std::string& file : files) {
    const Outcome outcome = Attempt(file, [&] {
      RunControl control(DeadlineIn(common.timeLimit.Given()));
      WriteDocument(file, control, output);
      return Status::Done;
    });
    gravest = Gravest(gravest, outcome.status);
    isEmpty = isEmpty && outcome.status != Status::Done;
  }
  if (isEmpty) return gravest;
  output.Write(std::string_view(page).substr(mark));
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
  const Outcome outcome = Attempt(about, [&] {
    const std::string name = isTemporary ? TemporaryPage() : options.output;
    const Status status = WritePage(common, options.files, name);
    if (isTemporary && StatusOf(PathOf(name)).kind == FileKind::Regular) Show(name, options);
    return status;
  });
  return outcome.status;
}

}  // namespace orxprint
