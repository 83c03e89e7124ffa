#include "orxprint/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;

FileKind KindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::Regular;
  return S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

FileStatus StatusFrom(int result, const struct stat& status) {
  if (result != 0) return {FileKind::None, errno, {}, 0, 0};
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  return {KindOf(status.st_mode),
          0,
          {status.st_dev, status.st_ino},
          static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0)),
          status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

}  // namespace

fs::path PathOf(const std::string& name) { return name; }

std::string NameOf(const fs::path& path) { return path.string(); }

FileStatus StatusOf(const fs::path& path) {
  struct stat status {};
  return StatusFrom(stat(path.c_str(), &status), status);
}

FileStatus StatusOf(int file) {
  struct stat status {};
  return StatusFrom(fstat(file, &status), status);
}

std::optional<fs::path> FollowLinks(fs::path path) {
  std::error_code error;
  for (int links = 0; links < kMostLinks; ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) return path;
    path = path.parent_path() / next;
  }
  return std::nullopt;
}

std::string NameInFolder(const fs::path& path) { return path.filename().string(); }

Descriptor OpenToRead(const fs::path& path) {
  return Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

Descriptor OpenToWrite(const fs::path& path, Waiting waiting) {
  const int patience = waiting == Waiting::Refused ? O_NONBLOCK : 0;
  Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | patience));
  if (!file.IsOpen() && errno == ENXIO && waiting == Waiting::Refused) errno = EAGAIN;
  return file;
}

Descriptor OpenNamelessFile(const fs::path& folder) {
#if defined(O_TMPFILE)
  const int nameless = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC | O_EXCL, 0600);
  if (nameless >= 0) return Descriptor(nameless);
#endif
  std::string name = (folder / "orxprint-XXXXXX").string();
  Descriptor file(mkstemp(name.data()));
  if (file.IsOpen()) unlink(name.c_str());
  return file;
}

fs::path TemporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  return folder && *folder ? folder : "/tmp";
}

std::uint64_t PlaceIn(int file) {
  return static_cast<std::uint64_t>(std::max<off_t>(lseek(file, 0, SEEK_CUR), 0));
}

void MoveToEnd(int file) { lseek(file, 0, SEEK_END); }

void RemoveFile(const fs::path& path) noexcept { unlink(path.c_str()); }

}  // namespace orxprint
