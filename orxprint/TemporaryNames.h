// Names of temporary files, which are removed when a signal ends the program.
//
// OutputFile.h writes under such a name and renames at the end, so that nothing half written ever
// stands under the name that the person gave. Handlers run at any moment, so what they look at is
// never moved or freed.
#pragma once

#include <atomic>
#include <filesystem>
#include <string>

namespace orxprint {

// A random name in a folder, short enough for any file system. While it is Held, the file of that
// name is removed by the destructor and by the signals that end the program.
class TemporaryName {
public:
  explicit TemporaryName(const std::filesystem::path& folder);
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;
  ~TemporaryName();

  [[nodiscard]] const std::string& Path() const { return place->path; }
  // The file has another name now.
  void Release() noexcept { place->isHeld = false; }

  // Places are made once, used again and never taken down, so that a signal may look at them at any
  // time.
  struct Place {
    std::string path;
    std::atomic<bool> isHeld = false;
    Place* next = nullptr;
  };

private:
  Place* place;
};

// Makes INT, TERM, HUP and QUIT remove temporary files before they end the program, also where it
// is the first process of a container, and a file that grows too large an error of writing. To be
// called once. A signal that is ignored stays ignored.
void CatchEndingSignals();

}  // namespace orxprint
