// An output that appears under its name only when it is complete and on the disk.
//
// Bytes go to a pending file in the same folder, which takes the output's name on Commit and is
// gone otherwise. An open descriptor ("-", "/dev/stdout", "/dev/fd/3"), a pipe and a device get
// their bytes on Commit, until when they are kept: few in memory, more in a temporary file.
#pragma once

#include <compare>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "orxprint/Descriptor.h"
#include "orxprint/Files.h"
#include "orxprint/PendingFile.h"

namespace orxprint {

// None when there is no such file.
[[nodiscard]] std::optional<FileIdentity> IdentityOf(const std::string& name);

// A place for a file, whether there is one or not: the same under every name of its folder.
struct FilePlace {
  FileIdentity folder;
  std::string name;

  // NOLINTNEXTLINE(modernize-use-nullptr): no pointer is here
  friend auto operator<=>(const FilePlace&, const FilePlace&) = default;
};

// Where an output of that name will be, links followed; none when it will not be a file of its own.
[[nodiscard]] std::optional<FilePlace> PlaceOf(const std::string& name);

class OutputFile {
public:
  // Throws Failure when the name cannot be written to.
  explicit OutputFile(std::string outputName);
  OutputFile(OutputFile&&) noexcept = default;
  OutputFile& operator=(OutputFile&&) noexcept = default;
  ~OutputFile() = default;

  [[nodiscard]] const std::string& Name() const { return name; }
  // Makes it an output of another name with the bytes of this one. REQUIRES: not closed. Throws
  // Failure.
  void MoveTo(const std::string& newName);
  // Returns whether the bytes were taken.
  bool Write(std::string_view bytes) noexcept;
  // No more bytes will come. Throws Failure when some could not be written.
  void Close();
  // Gives the output its name, or the bytes to their reader, who may take until the deadline.
  // REQUIRES: closed. Throws Failure, or Stopped when the reader does not come.
  void Commit(const Deadline& deadline);

private:
  [[noreturn]] void Fail(int error) const;
  void Require(int error) const;
  bool Flush() noexcept;
  // Whether there is a file to put the bytes into from now on.
  bool HasPlaceForMany() noexcept;
  // The file that the bytes go to; none while they are kept in memory.
  [[nodiscard]] std::optional<int> Place() const;
  // Calls take(bytes) with all that was written, in blocks, until it answers other than 0. Returns
  // that, or an errno value.
  template <typename Take>
  [[nodiscard]] int ReadBack(Take take);
  [[nodiscard]] Descriptor OpenReader(const Deadline& deadline) const;

  std::string name;
  std::filesystem::path target;       // with symbolic links followed
  std::unique_ptr<PendingFile> file;  // none: the bytes go to a reader
  Descriptor spool;                   // for those of which there are many
  std::string kept;                   // what is not written yet
  int writeError = 0;
};

}  // namespace orxprint
