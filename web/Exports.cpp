// How the worker's script has documents drawn, and what it is called back for while they are.
#include <emscripten.h>

#include <exception>
#include <new>
#include <string>

#include "web/ExportedDrawing.h"

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

using orxweb::ExportedDrawing;
using orxweb::OpenDocument;

class ScriptReceiver final : public orxweb::PageReceiver {
public:
  void TakeBytes(std::string_view bytes) override { TellBytes(bytes.data(), bytes.size()); }
  void TakePage(std::uint32_t /*page*/, const orxdrawing::Box& area) override {
    TellPage(area.left, area.bottom, area.right, area.top);
  }
};

bool MayGoOn(std::uint64_t place) { return TellProgress(static_cast<double>(place)) != 0; }

// Returns whether it worked, and tells why not.
template <typename Work>
int Try(Work work) {
  try {
    work();
    return 1;
  } catch (const std::bad_alloc&) {
    TellFailure("it needs more memory than a browser gives");
  } catch (const std::exception& failure) {
    TellFailure(failure.what());
  }
  return 0;
}

}  // namespace

extern "C" {

// Takes the bytes of a file, which the caller releases, as that side of what is to be drawn.
EMSCRIPTEN_KEEPALIVE int TakeFile(int side, const char* bytes, std::size_t count) {
  return Try([&] {
    ExportedDrawing::Open().documents.at(static_cast<std::size_t>(side)) =
        std::make_unique<OpenDocument>(std::string(bytes, count));
  });
}

// Draw the one file, or what differs between both. Return whether that could be done.
EMSCRIPTEN_KEEPALIVE int DrawFile() {
  return Try([] {
    ScriptReceiver receiver;
    ExportedDrawing::Open().documents[0]->Draw(receiver, MayGoOn);
  });
}
EMSCRIPTEN_KEEPALIVE int CompareFiles() {
  return Try([] {
    ExportedDrawing& open = ExportedDrawing::Open();
    open.comparison =
        std::make_unique<orxweb::ComparedDocuments>(*open.documents[0], *open.documents[1]);
    ScriptReceiver receiver;
    open.comparison->Draw(receiver, MayGoOn);
  });
}

}  // extern "C"
