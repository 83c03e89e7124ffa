#include "orxprint/Plugin.h"

#include <atomic>
#include <exception>
#include <filesystem>
#include <new>
#include <vector>

#include "framework/InputStreams.h"
#include "orxprint/Files.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"

#define ORXPRINT_TEXT_OF(name) #name
#define ORXPRINT_NAME_TEXT(name) ORXPRINT_TEXT_OF(name)

namespace orxprint {

const char* const kPluginClassName = "ORXPrintEPSInterpreter";
const char* const kPluginMarkerName = ORXPRINT_NAME_TEXT(ORX_MODULE_MARKER);

namespace {

std::unique_ptr<ORXPrintInterpreter> Make(ORXFactoryFunction factory, PrintInputStream& input) {
  return std::unique_ptr<ORXPrintInterpreter>(
      static_cast<ORXPrintInterpreter*>(factory(static_cast<void*>(&input))));
}

// Why the factory makes no interpreters, or nothing when it does.
std::string TryFactory(ORXFactoryFunction factory) {
  orxframework::MemoryInputStream nothing{std::string_view()};
  try {
    return Make(factory, nothing) ? "" : "makes no interpreter";
  } catch (const std::exception& problem) {
    return std::string("throws when it is to make an interpreter: ") + problem.what();
  } catch (...) {
    return "throws when it is to make an interpreter";
  }
}

// Loads one file. Returns why it does not do, or nothing when it does.
std::string LoadModule(const std::filesystem::path& file) {
  const OpenedLibrary library = OpenLibrary(file);
  if (!library.handle) return library.error;
  using Marker = int (*)();
  const auto marker = reinterpret_cast<Marker>(FindFunction(library.handle, kPluginMarkerName));
  if (!marker || marker() != 1) return NameOf(file) + ": not a module of the print framework";
  const ORXFactoryFunction factory = ORXFillDictionary::Find(kPluginClassName);
  if (!factory) return NameOf(file) + ": registers no class " + kPluginClassName;
  const std::string reason = TryFactory(factory);
  return reason.empty() ? "" : NameOf(file) + ": " + reason;
}

// The same as a run under control, for a module may do anything while it is loaded.
std::string LoadModuleBy(const Deadline& deadline, const std::filesystem::path& file) {
  struct Loading {
    std::string reason;
    std::atomic<bool> isOver = false;
  };
  const auto control = std::make_shared<RunControl>(deadline);
  const auto loading = std::make_shared<Loading>();
  const auto work = [loading, file] {
    loading->reason = LoadModule(file);
    loading->isOver = true;
  };
  Run(control, work, [] {});
  if (loading->isOver) return loading->reason;
  return NameOf(file) + ": was not loaded; " + Describe(control->Reason().value_or(Stop::GaveUp));
}

}  // namespace

std::vector<std::filesystem::path> ModulePlaces(const std::string& fileName) {
  const std::filesystem::path folder = ProgramFile().parent_path();
  if (!folder.is_absolute()) {
    throw NoPlugin("the system does not tell where this program lies: name the file with --plugin");
  }
  return {(folder / ORXPRINT_MODULE_FOLDER / fileName).lexically_normal(),
          (folder / "../lib" / fileName).lexically_normal()};
}

// A name without a folder would make the loader search the system's folders.
std::vector<std::filesystem::path> PluginPlaces(const std::string& file) {
  if (file.empty()) return ModulePlaces(ORXPRINT_MODULE_NAME);
  return {AbsolutePath(PathOf(file))};
}

Plugin::Plugin(const std::string& file, const Deadline& deadline) {
  std::string tried;
  for (const std::filesystem::path& place : PluginPlaces(file)) {
    const std::string reason = LoadModuleBy(deadline, place);
    if (reason.empty()) {
      factory = ORXFillDictionary::Find(kPluginClassName);
      return;
    }
    tried += (tried.empty() ? "" : "\n") + reason;
  }
  throw NoPlugin(tried);
}

std::unique_ptr<ORXPrintInterpreter> Plugin::MakeInterpreter(PrintInputStream& input) const {
  try {
    if (auto interpreter = Make(factory, input)) return interpreter;
  } catch (...) {
    // It has made one before: what is missing now is memory.
  }
  throw std::bad_alloc();
}

}  // namespace orxprint
