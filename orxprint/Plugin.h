// The interpreter's library, met at run time only: found, opened and asked for interpreters by the
// class name that it registered.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintInputStream.h"

namespace orxprint {

// The text lists every place that was tried, one a line, with the reason why it did not do.
struct NoPlugin : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Plugin {
public:
  // Loads the given file; with an empty name looks beside the installed program and in the build
  // tree. Throws NoPlugin.
  explicit Plugin(const std::string& file);

  // A new interpreter over a stream that must outlive it. Null when memory has run out.
  [[nodiscard]] std::unique_ptr<ORXPrintInterpreter> MakeInterpreter(PrintInputStream& input) const;

private:
  ORXFactoryFunction factory = nullptr;
};

}  // namespace orxprint
