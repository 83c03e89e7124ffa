#include "orxprint/Plugin.h"

#include <filesystem>
#include <vector>

#include "orxprint/Platform.h"

#define ORXPRINT_TEXT_OF(name) #name
#define ORXPRINT_NAME_TEXT(name) ORXPRINT_TEXT_OF(name)

namespace orxprint {

namespace {

constexpr const char* kClassName = "ORXPrintEPSInterpreter";
constexpr const char* kMarkerName = ORXPRINT_NAME_TEXT(ORX_MODULE_MARKER);

std::vector<std::filesystem::path> UsualPlaces() {
  const std::filesystem::path folder = ProgramFile().parent_path();
  return {(folder / ORXPRINT_MODULE_FOLDER / ORXPRINT_MODULE_NAME).lexically_normal(),
          (folder / "../lib" / ORXPRINT_MODULE_NAME).lexically_normal()};
}

// Loads one file. Returns why it does not do, or nothing when it does.
std::string LoadModule(const std::filesystem::path& file) {
  const OpenedLibrary library = OpenLibrary(file);
  if (!library.handle) return library.error;
  using Marker = int (*)();
  const auto marker = reinterpret_cast<Marker>(FindSymbol(library.handle, kMarkerName));
  if (!marker || marker() != 1) return file.string() + ": not a module of the print framework";
  if (!ORXFillDictionary::Find(kClassName)) {
    return file.string() + ": registers no class " + kClassName;
  }
  return {};
}

}  // namespace

Plugin::Plugin(const std::string& file) {
  // A name without a folder would make the loader search the system's folders.
  const auto places = file.empty()
                          ? UsualPlaces()
                          : std::vector<std::filesystem::path>{std::filesystem::absolute(file)};
  std::string tried;
  for (const std::filesystem::path& place : places) {
    const std::string reason = LoadModule(place);
    if (reason.empty()) {
      factory = ORXFillDictionary::Find(kClassName);
      return;
    }
    tried += (tried.empty() ? "" : "\n") + reason;
  }
  throw NoPlugin(tried);
}

std::unique_ptr<ORXPrintInterpreter> Plugin::MakeInterpreter(PrintInputStream& input) const {
  return std::unique_ptr<ORXPrintInterpreter>(
      static_cast<ORXPrintInterpreter*>(factory(static_cast<void*>(&input))));
}

}  // namespace orxprint
