#include "orxprint/TemporaryNames.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <random>

namespace orxprint {

namespace {

using Place = TemporaryName::Place;

// The signal handler reads the list while it is being added to.
std::atomic<Place*> places = nullptr;
std::mutex placesDoor;

Place* FindPlace() {
  for (Place* place = places; place; place = place->next) {
    if (!place->isHeld) return place;
  }
  auto* place = new Place;
  place->next = places;
  places = place;
  return place;
}

std::string RandomName() {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::random_device random;
  std::string name = ".orxprint-";
  for (std::uint64_t bits = std::uint64_t{random()} << 32 | random(); name.size() < 26;
       bits >>= 4) {
    name += kDigits[bits & 15];
  }
  return name;
}

// Only what may be called at any time: unlink, signal, raise and _exit.
void RemoveFilesAndEnd(int signalNumber) {
  for (const Place* place = places; place; place = place->next) {
    if (place->isHeld) unlink(place->path.c_str());
  }
  std::signal(signalNumber, SIG_DFL);
  std::raise(signalNumber);
  // The first process of a container is not ended by a signal; shells count as this does.
  _exit(128 + signalNumber);
}

}  // namespace

TemporaryName::TemporaryName(const std::filesystem::path& folder) {
  std::string path = (folder / RandomName()).string();
  const std::lock_guard lock(placesDoor);
  place = FindPlace();
  place->path = std::move(path);
  place->isHeld = true;
}

TemporaryName::~TemporaryName() {
  if (!place->isHeld) return;
  unlink(place->path.c_str());
  place->isHeld = false;
}

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
