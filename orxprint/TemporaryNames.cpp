#include "orxprint/TemporaryNames.h"

#include <cstdint>
#include <mutex>
#include <random>
#include <string>

#include "orxprint/Files.h"

namespace orxprint {

namespace {

std::mutex placesDoor;

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

}  // namespace

// The signal handler reads the list while it is being added to.
std::atomic<TemporaryName::Place*> TemporaryName::places = nullptr;

TemporaryName::Place* TemporaryName::FindPlace() {
  for (Place* known = places; known; known = known->next) {
    if (!known->isHeld) return known;
  }
  auto* added = new Place;
  added->next = places;
  places = added;
  return added;
}

void TemporaryName::RemoveHeld() noexcept {
  for (const Place* known = places; known; known = known->next) {
    if (known->isHeld) RemoveFile(known->path);
  }
}

TemporaryName::TemporaryName(const std::filesystem::path& folder) {
  std::filesystem::path path = folder / RandomName();
  const std::lock_guard lock(placesDoor);
  place = FindPlace();
  place->path = std::move(path);
  place->isHeld = true;
}

TemporaryName::~TemporaryName() {
  if (!place->isHeld) return;
  RemoveFile(place->path);
  place->isHeld = false;
}

}  // namespace orxprint
