#include <unistd.h>

#include <csignal>

#include "orxprint/TemporaryNames.h"

namespace orxprint {

namespace {

// Only what may be called at any time: unlink, signal, raise and _exit.
void RemoveFilesAndEnd(int signalNumber) {
  TemporaryName::RemoveHeld();
  std::signal(signalNumber, SIG_DFL);
  std::raise(signalNumber);
  // The first process of a container is not ended by a signal; shells count as this does.
  _exit(128 + signalNumber);
}

}  // namespace

void CatchEndingSignals() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = RemoveFilesAndEnd;
    action.sa_flags = SA_NODEFER;
    sigaction(number, &action, nullptr);
  }
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace orxprint
