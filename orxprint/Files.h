// Files by their names, as the operating system has them. Names are UTF-8 everywhere in this
// program; paths are made of them here only, so that they may be as long as the file system allows.
#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "orxprint/Descriptor.h"

namespace orxprint {

// The path that a name means.
[[nodiscard]] std::filesystem::path PathOf(const std::string& name);
// A path as it is shown.
[[nodiscard]] std::string NameOf(const std::filesystem::path& path);

// What tells one file from another, under whatever name.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t number = 0;

  // NOLINTNEXTLINE(modernize-use-nullptr): no pointer is here
  friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

enum class FileKind { None, Regular, Folder, Other };  // others are pipes and devices

struct FileStatus {
  FileKind kind = FileKind::None;
  int error = 0;  // an errno value: why nothing is known
  FileIdentity identity;
  std::uint64_t size = 0;    // bytes
  std::int64_t changed = 0;  // when the content was changed last, in the system's own unit
};

[[nodiscard]] FileStatus StatusOf(const std::filesystem::path& path);
[[nodiscard]] FileStatus StatusOf(int file);

// What a chain of symbolic links ends at, whether there is a file or not, so that the links stay.
// None when it has no end.
[[nodiscard]] std::optional<std::filesystem::path> FollowLinks(std::filesystem::path path);
// A file's name within its folder, the same for all ways to write it.
[[nodiscard]] std::string NameInFolder(const std::filesystem::path& path);

// What these give is not open, with errno set, when there can be no such file.

// Opens what there is. A pipe without a writer does not keep this waiting.
[[nodiscard]] Descriptor OpenToRead(const std::filesystem::path& path);
// Opens a pipe or a device; EAGAIN when that would have to wait for a reader and must not.
enum class Waiting { Allowed, Refused };
[[nodiscard]] Descriptor OpenToWrite(const std::filesystem::path& path, Waiting waiting);
// A new file in the folder, open for reading and writing, that is gone when it is closed.
[[nodiscard]] Descriptor OpenNamelessFile(const std::filesystem::path& folder);
// Where such files go unless the person says something else.
[[nodiscard]] std::filesystem::path TemporaryFolder();

// The place where the next bytes of a regular file would be read, and moving it to the end.
[[nodiscard]] std::uint64_t PlaceIn(int file);
void MoveToEnd(int file);

// Removes a file. May be called while a signal is being handled.
void RemoveFile(const std::filesystem::path& path) noexcept;

}  // namespace orxprint
