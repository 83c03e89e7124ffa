// A file that is being written and has no place yet. It takes the place of what bears the output's
// name in one step, or is gone when it is destroyed.
#pragma once

#include <filesystem>
#include <memory>

namespace orxprint {

class PendingFile {
public:
  PendingFile() = default;
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  virtual ~PendingFile() = default;

  // The descriptor to write to and to read back from, until Finish.
  [[nodiscard]] virtual int Number() const = 0;
  // No more bytes will come: puts them on the disk, with the rights of the file that is replaced.
  // Returns 0, or the errno value.
  [[nodiscard]] virtual int Finish() = 0;
  // Gives the file its place. REQUIRES: finished. Returns 0, or the errno value.
  [[nodiscard]] virtual int TakePlace() = 0;
};

// A pending file for a path in the path's folder; null, with errno set, when there can be none.
[[nodiscard]] std::unique_ptr<PendingFile> MakePendingFile(const std::filesystem::path& target);

}  // namespace orxprint
