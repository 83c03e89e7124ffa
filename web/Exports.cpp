// What the worker's script calls, and what it is called back for. One document for each instance.
#include <emscripten.h>

#include <exception>
#include <memory>
#include <new>
#include <string>

#include "drawing/Text.h"
#include "web/OpenDocument.h"

// NOLINTBEGIN: the bodies are JavaScript
EM_JS(void, TellBytes, (const char* bytes, std::size_t count),
      { Module.host.takeBytes(HEAPU8.slice(bytes, bytes + count)); });
EM_JS(void, TellPage, (double left, double bottom, double right, double top), {
  Module.host.takePage({left, bottom, right, top});
});
EM_JS(int, TellProgress, (double bytes), { return Module.host.progress(bytes) ? 1 : 0; });
EM_JS(void, TellFailure, (const char* text), { Module.host.fail(UTF8ToString(text)); });
// NOLINTEND

namespace {

std::unique_ptr<orxweb::OpenDocument> document;
std::string answer;  // what was answered last, until the next answer

class ScriptReceiver final : public orxweb::PageReceiver {
public:
  void TakeBytes(std::string_view bytes) override { TellBytes(bytes.data(), bytes.size()); }
  void TakePage(std::uint32_t /*page*/, const orxdrawing::Box& area) override {
    TellPage(area.left, area.bottom, area.right, area.top);
  }
};

// The place in the file, or -1.
double InFile(std::uint64_t place) {
  if (place == ORXPlace::kNone) return -1;
  return static_cast<double>(place + document->Offset());
}

const orxweb::IndexedShape* ShapeAt(int shape) {
  const auto& shapes = document->Index().Shapes();
  if (shape < 0 || static_cast<std::size_t>(shape) >= shapes.size()) return nullptr;
  return &shapes[static_cast<std::size_t>(shape)];
}

const orxdrawing::Finding& FindingAt(int finding) {
  return document->Findings().at(static_cast<std::size_t>(finding));
}

const char* Answer(std::string_view text) {
  answer = orxdrawing::EscapeForTerminal(text);
  return answer.c_str();
}

}  // namespace

extern "C" {

// Takes the bytes of a file, which the caller releases, and draws it. Returns whether it could be.
EMSCRIPTEN_KEEPALIVE int OpenFile(const char* bytes, std::size_t count) {
  try {
    document = std::make_unique<orxweb::OpenDocument>(std::string(bytes, count));
    ScriptReceiver receiver;
    document->Draw(receiver, [](std::uint64_t place) {
      return TellProgress(static_cast<double>(place)) != 0;
    });
    return 1;
  } catch (const std::bad_alloc&) {
    TellFailure("it needs more memory than a browser gives");
  } catch (const std::exception& failure) {
    TellFailure(failure.what());
  }
  return 0;
}

// How the drawing ended: the number of an ORXPassResult, its error and its place in the file.
EMSCRIPTEN_KEEPALIVE int EndResult() { return static_cast<int>(document->End().result); }
EMSCRIPTEN_KEEPALIVE const char* EndError() { return document->End().error; }
EMSCRIPTEN_KEEPALIVE double EndPlace() { return InFile(document->End().position); }
EMSCRIPTEN_KEEPALIVE int StartsLikePostScript() { return document->StartsLikePostScript() ? 1 : 0; }
EMSCRIPTEN_KEEPALIVE int IndexIsComplete() { return document->Index().IsComplete() ? 1 : 0; }
EMSCRIPTEN_KEEPALIVE double LostPoints() { return static_cast<double>(document->LostPoints()); }

// The uppermost shape at a place of a page, in points; -1 for none.
EMSCRIPTEN_KEEPALIVE int FindShape(unsigned page, double x, double y, double reach) {
  const auto found = document->Index().At(page, {x, y}, reach);
  return found ? static_cast<int>(*found) : -1;
}
EMSCRIPTEN_KEEPALIVE int ShapeCount() {
  return static_cast<int>(document->Index().Shapes().size());
}
EMSCRIPTEN_KEEPALIVE int KindOfShape(int shape) {
  const auto* found = ShapeAt(shape);
  return found ? static_cast<int>(found->kind) : -1;
}
EMSCRIPTEN_KEEPALIVE int PageOfShape(int shape) {
  const auto* found = ShapeAt(shape);
  return found ? static_cast<int>(found->page) : -1;
}
// In points.
EMSCRIPTEN_KEEPALIVE double WidthOfShape(int shape) {
  const auto* found = ShapeAt(shape);
  return found ? found->width : 0;
}
// Where the file draws it, and the procedure that does; -1 for none.
EMSCRIPTEN_KEEPALIVE double PlaceOfShape(int shape) {
  const auto* found = ShapeAt(shape);
  return found ? InFile(found->place.token) : -1;
}
EMSCRIPTEN_KEEPALIVE double DefinitionOfShape(int shape) {
  const auto* found = ShapeAt(shape);
  return found ? InFile(found->place.definition) : -1;
}
EMSCRIPTEN_KEEPALIVE const char* OutlineOfShape(int shape) {
  const auto* found = ShapeAt(shape);
  answer = found ? document->Index().OutlineOf(*found) : std::string();
  return answer.c_str();
}

// What is lost or different, the gravest first.
EMSCRIPTEN_KEEPALIVE int FindingCount() { return static_cast<int>(document->Findings().size()); }
EMSCRIPTEN_KEEPALIVE const char* SeverityOfFinding(int finding) {
  return Answer(orxdrawing::TextOf(orxdrawing::KindOf(FindingAt(finding).loss).severity));
}
EMSCRIPTEN_KEEPALIVE const char* MeaningOfFinding(int finding) {
  return Answer(orxdrawing::KindOf(FindingAt(finding).loss).means);
}
EMSCRIPTEN_KEEPALIVE const char* NameOfFinding(int finding) {
  return Answer(FindingAt(finding).name);
}
EMSCRIPTEN_KEEPALIVE const char* DetailOfFinding(int finding) {
  return Answer(FindingAt(finding).detail);
}
EMSCRIPTEN_KEEPALIVE double TimesOfFinding(int finding) {
  return static_cast<double>(FindingAt(finding).count);
}
// Of widths: drawn to meant; 0 for others.
EMSCRIPTEN_KEEPALIVE double RatioOfFinding(int finding) { return FindingAt(finding).ratio; }
// Its first places in the file.
EMSCRIPTEN_KEEPALIVE int PlacesOfFinding(int finding) {
  return static_cast<int>(FindingAt(finding).places.size());
}
EMSCRIPTEN_KEEPALIVE double PlaceOfFinding(int finding, int place) {
  return InFile(FindingAt(finding).places.at(static_cast<std::size_t>(place)).token);
}

}  // extern "C"
