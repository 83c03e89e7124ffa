// The interpreter's library, met at run time only: found, opened and asked for interpreters by the
// class name that it registered.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintInputStream.h"
#include "orxprint/Descriptor.h"

namespace orxprint {

// The text lists every place that was tried, one a line, with the reason why it did not do.
struct NoPlugin : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The class that the plug-in registers, and the function that marks it as a module.
extern const char* const kPluginClassName;
extern const char* const kPluginMarkerName;

// Where modules that belong to this program lie: beside the installed program and in the build
// tree, never in the working folder, which may be anybody's. Throws NoPlugin when the system does
// not tell where the program lies.
[[nodiscard]] std::vector<std::filesystem::path> ModulePlaces(const std::string& fileName);

// Where the plug-in is looked for: the given file; with an empty name beside the installed program
// and in the build tree. Throws NoPlugin when the system does not tell where the program lies.
[[nodiscard]] std::vector<std::filesystem::path> PluginPlaces(const std::string& file);

class Plugin {
public:
  // Loads from the first of the places that will do. A module that does not come back by the
  // deadline is left behind. Throws NoPlugin.
  Plugin(const std::string& file, const Deadline& deadline);

  // A new interpreter over a stream that must outlive it. Throws std::bad_alloc when there is none.
  [[nodiscard]] std::unique_ptr<ORXPrintInterpreter> MakeInterpreter(PrintInputStream& input) const;

private:
  ORXFactoryFunction factory = nullptr;
};

}  // namespace orxprint
