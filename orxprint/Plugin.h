// The interpreter's library, met at run time only: found, opened and asked for interpreters by the
// class name that it registered.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintInputStream.h"
#include "orxprint/Descriptor.h"

namespace orxprint {

// The text lists every place that was tried, one a line, with the reason why it did not do.
struct NoPlugin : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Plugin {
public:
  // Loads the given file; with an empty name looks beside the installed program and in the build
  // tree. A module that does not come back by the deadline is left behind. Throws NoPlugin.
  Plugin(const std::string& file, const Deadline& deadline);

  // A new interpreter over a stream that must outlive it. Throws std::bad_alloc when there is none.
  [[nodiscard]] std::unique_ptr<ORXPrintInterpreter> MakeInterpreter(PrintInputStream& input) const;

private:
  ORXFactoryFunction factory = nullptr;
};

}  // namespace orxprint
