// Names of temporary files, which are removed when a signal ends the program.
//
// OutputFile.h writes under such a name and renames at the end, so that nothing half written ever
// stands under the name that the person gave. Handlers run at any moment, so what they look at is
// never moved or freed.
#pragma once

#include <atomic>
#include <filesystem>

namespace orxprint {

// A random name in a folder, short enough for any file system. While it is Held, the file of that
// name is removed by the destructor and by the signals that end the program.
class TemporaryName {
public:
  explicit TemporaryName(const std::filesystem::path& folder);
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;
  ~TemporaryName();

  [[nodiscard]] const std::filesystem::path& Path() const { return place->path; }
  // The file has another name now.
  void Release() noexcept { place->isHeld = false; }

  // Removes all files whose names are held. May be called while a signal is being handled.
  static void RemoveHeld() noexcept;

private:
  // Places are made once, used again and never taken down, so that a signal may look at them at any
  // time.
  struct Place {
    std::filesystem::path path;
    std::atomic<bool> isHeld = false;
    Place* next = nullptr;
  };

  static Place* FindPlace();

  static std::atomic<Place*> places;
  Place* place;
};

// Makes what ends the program from outside remove temporary files first: the signals INT, TERM, HUP
// and QUIT, also where it is the first process of a container, and the events of a console. A file
// that grows too large becomes an error of writing. To be called once. A signal that is ignored
// stays ignored.
void CatchEndingSignals();

}  // namespace orxprint
