#include "orxprint/PdfModule.h"

#include "orxprint/Failure.h"
#include "orxprint/Platform.h"
#include "orxprint/Plugin.h"

namespace orxprint {

namespace {

constexpr const char* kFileName = "orxprint-pdf.so";
constexpr const char* kFunctionName = "WritePdfFile";

orxdrawing::PdfWriter Load() {
  std::string problem;
  for (const std::filesystem::path& place : ModulePlaces(kFileName)) {
    const OpenedLibrary library = OpenLibrary(place);
    void* function = library.handle ? FindFunction(library.handle, kFunctionName) : nullptr;
    if (function) return reinterpret_cast<orxdrawing::PdfWriter>(function);
    problem = library.error;
  }
  throw Failure("the part of orxprint that writes PDF could not be loaded: " + problem);
}

}  // namespace

orxdrawing::PdfWriter LoadPdfWriter() {
  static const orxdrawing::PdfWriter writer = Load();
  return writer;
}

}  // namespace orxprint
