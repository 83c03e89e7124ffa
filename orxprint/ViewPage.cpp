#include "orxprint/ViewPage.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

#include "drawing/Base64.h"
#include "drawing/Deflater.h"
#include "drawing/Text.h"
#include "orxprint/Failure.h"
#include "orxprint/Platform.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPageName = "orxprint.html";
constexpr const char* kDrawnPageName = "orxprint-drawn.html";
// Documents stand in front of this.
constexpr std::string_view kMark = "<script type=\"text/plain\" id=\"worker\">";
constexpr std::size_t kBlockBytes = 48 << 10;

std::optional<ViewTemplate> Read(const fs::path& place, bool hasInterpreter) {
  std::ifstream file(place, std::ios::binary);
  if (!file) return std::nullopt;
  const std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::size_t mark = page.find(kMark);
  if (mark == std::string::npos) return std::nullopt;
  return ViewTemplate{page.substr(0, mark), page.substr(mark), hasInterpreter};
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

std::string Element(const std::string& attributes) {
  return "<script type=\"text/plain\" " + attributes + ">";
}

// In zlib's format, which browsers unpack.
void WritePacked(OutputFile& output, std::string_view text) {
  orxdrawing::Base64Encoder letters;
  const auto deflater = orxdrawing::MakeZlibDeflater(
      orxdrawing::Effort::Normal,
      [&](std::string_view bytes) { output.Write(letters.Add(bytes)); });
  deflater->Add({reinterpret_cast<const unsigned char*>(text.data()), text.size()});
  deflater->Finish();
  output.Write(letters.Finish() + "</script>\n");
}

}  // namespace

ViewTemplate ReadViewTemplate() {
  const fs::path folder = ProgramFile().parent_path();
  for (const char* place : {ORXPRINT_PAGE_FOLDER, "../../web/bin"}) {
    if (auto page = Read(folder / place / kPageName, true)) return *page;
  }
  if (auto page = Read(folder / ORXPRINT_PAGE_FOLDER / kDrawnPageName, false)) return *page;
  throw Failure("this installation has neither " + std::string(kPageName) + " nor " +
                kDrawnPageName + ": install it anew, or build it with Python at hand");
}

void WriteDocument(OutputFile& output, std::string_view shownName, const BytesAt& read) {
  output.Write(Element("class=\"document\" data-name=\"" + EscapeForAttribute(shownName) + "\""));
  orxdrawing::Base64Encoder letters;
  const auto buffer = std::make_unique<std::array<char, kBlockBytes>>();
  for (std::uint64_t place = 0;;) {
    const std::size_t count = read(place, buffer->data(), buffer->size());
    if (count == 0) break;
    output.Write(letters.Add({buffer->data(), count}));
    place += count;
  }
  output.Write(letters.Finish() + "</script>\n");
}

void WriteDrawing(OutputFile& output, const DrawnDocument& drawn) {
  for (const DrawnPage& page : drawn.pages) {
    std::string area;
    for (const double side : {page.area.left, page.area.bottom, page.area.right, page.area.top}) {
      area += (area.empty() ? "" : " ") + Json(side).dump();
    }
    output.Write(Element("class=\"page\" data-area=\"" + area + "\""));
    WritePacked(output, page.svg);
  }
  output.Write(Element("class=\"report\""));
  WritePacked(output, Dump(drawn.report, -1));
}

}  // namespace orxprint
