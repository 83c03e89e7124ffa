// Loads the built module as a framework does and prints everything that it answers about documents:
// pages, sizes, labels, statistics and every call of a drawing pass. What it prints must be the
// same on every platform.
//
//   orxeps_answers MODULE DOCUMENT...
//
// The module is loaded, unloaded and loaded again before it is used.
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "drawing/TraceGenerator.h"
#include "framework/CheckedHost.h"
#include "framework/InputStreams.h"
#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "tests/platform/DynamicLibrary.h"

namespace {

constexpr unsigned kMostPages = 100;

using orxtests::CloseLibrary;
using orxtests::FindSymbol;
using orxtests::OpenLibrary;

// The factory that loading the module registers, which is the one that it exports; null when
// anything is not as it should be.
ORXFactoryFunction LoadedFactory(void* library) {
  if (!library) return nullptr;
  int (*marker)() = nullptr;
  void* const symbol = FindSymbol(library, "fctIsORXOMModule");
  if (!symbol) return nullptr;
  std::memcpy(&marker, &symbol, sizeof marker);
  if (marker() != 1) return nullptr;
  const ORXFactoryFunction factory = ORXFillDictionary::Find("ORXPrintEPSInterpreter");
  const void* const exported = FindSymbol(library, "fctCreateORXPrintEPSInterpreter");
  return std::memcmp(&factory, &exported, sizeof factory) == 0 ? factory : nullptr;
}

void Print(const ORXUnicodeString& text) { std::printf(" (%s)", text.ToUtf8().c_str()); }

void Print(float number) {
  std::array<char, 64> text;
  const char* const end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  std::printf(" %.*s", static_cast<int>(end - text.data()), text.data());
}

void PrintPages(ORXPrintInterpreter& interpreter) {
  unsigned count = 0;
  std::printf("pages: %d", interpreter.GetPageCount(&count));
  std::printf(" %u\n", count);
  interpreter.SetAllPages(0);
  for (unsigned page = 1; page <= count && page <= kMostPages; ++page) {
    float width = 0.0F;
    float height = 0.0F;
    ORXUnicodeString label;
    interpreter.SetCurrentPage(page);
    std::printf("page %u: %d", page, interpreter.GetPageSize(&width, &height));
    Print(width);
    Print(height);
    std::printf(" %d", interpreter.GetPageLabel(label));
    Print(label);
    std::printf("\n");
  }
  interpreter.SetAllPages(1);
}

void PrintStatistics(ORXPrintInterpreter& interpreter) {
  ORXListValORXUnicodeString lines;
  std::printf("statistics: %d", interpreter.CollectStatistics(lines));
  for (std::size_t i = 1; i <= lines.Count(); ++i) Print(lines.At(i));
  std::printf("\n");
}

// Returns whether the module kept to the rules of the host's interfaces.
bool PrintAnswers(ORXFactoryFunction factory, const char* document) {
  orxframework::FileInputStream file{std::filesystem::path(document)};
  orxframework::CheckedInputStream input(file);
  PrintInputStream* const stream = &input;
  const std::unique_ptr<ORXPrintInterpreter> interpreter(
      static_cast<ORXPrintInterpreter*>(factory(stream)));
  if (!interpreter) return false;
  PrintPages(*interpreter);
  PrintStatistics(*interpreter);
  orxdrawing::TraceGenerator trace(
      orxdrawing::TraceGenerator::Samples::Written,
      [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); });
  const int result = interpreter->Generate(&trace);
  trace.Flush();
  std::printf("drawn: %d\n", result);
  for (const std::string& violation : input.Violations()) {
    std::fprintf(stderr, "%s: %s\n", document, violation.c_str());
  }
  return input.Violations().empty();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: orxeps_answers MODULE DOCUMENT...\n", stderr);
    return 2;
  }
  orxtests::WriteBytesToStandardOutput();
  void* const first = OpenLibrary(argv[1]);
  if (!LoadedFactory(first) || !CloseLibrary(first)) {
    std::fprintf(stderr, "%s: cannot be loaded, or not unloaded\n", argv[1]);
    return 1;
  }
  const ORXFactoryFunction factory = LoadedFactory(OpenLibrary(argv[1]));
  if (!factory) {
    std::fprintf(stderr, "%s: cannot be loaded a second time\n", argv[1]);
    return 1;
  }
  bool isSound = true;
  for (int i = 2; i < argc; ++i) isSound = PrintAnswers(factory, argv[i]) && isSound;
  return isSound ? 0 : 1;
}
