// Without a name where the file system allows that, under a random one else.
#include "orxprint/PendingFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>

#include "orxprint/Descriptor.h"
#include "orxprint/TemporaryNames.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

// Every nameless file stays open until it gets its name; descriptors from here on are left to
// others.
constexpr int kMostDescriptors = 128;
constexpr mode_t kRights = 0777;

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

mode_t RightsOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

class PosixPendingFile final : public PendingFile {
public:
  explicit PosixPendingFile(fs::path itsTarget) : target(std::move(itsTarget)) {}

  // Returns 0, or the errno value.
  int Make() {
    const fs::path folder = FolderOf(target);
#if defined(O_TMPFILE)
    if (access("/proc/self/fd", X_OK) == 0) {
      file = Descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
      isNameless = file.IsOpen() && file.Number() < kMostDescriptors;
      if (isNameless) return 0;
    }
#endif
    temporary = std::make_unique<TemporaryName>(folder);
    file = Descriptor(open(temporary->Path().c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0600));
    if (file.IsOpen()) return 0;
    const int error = errno;
    temporary->Release();
    return error;
  }

  [[nodiscard]] int Number() const override { return file.Number(); }

  [[nodiscard]] int Finish() override {
    int error = TakeOverRights();
    if (error == 0 && fsync(file.Number()) != 0 && errno != EINVAL) error = errno;
    return error != 0 || isNameless ? error : file.Close();
  }

  [[nodiscard]] int TakePlace() override {
    const int error = isNameless ? NameTheNameless() : 0;
    if (error != 0 || !temporary) return error;
    if (rename(temporary->Path().c_str(), target.c_str()) != 0) return errno;
    temporary->Release();
    return 0;
  }

private:
  // The mode and, where the user may, the owner of the file that is replaced.
  int TakeOverRights() {
    struct stat replaced {};
    mode_t rights = RightsOfNewFiles();
    if (stat(target.c_str(), &replaced) == 0) {
      rights = replaced.st_mode & kRights;
      // Nobody but the administrator may give a file away.
      [[maybe_unused]] const int ignored = fchown(file.Number(), replaced.st_uid, replaced.st_gid);
    }
    return fchmod(file.Number(), rights) == 0 ? 0 : errno;
  }

  int NameTheNameless() {
    const std::string source = "/proc/self/fd/" + std::to_string(file.Number());
    const auto link = [&source](const fs::path& path) {
      return linkat(AT_FDCWD, source.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0
                 ? 0
                 : errno;
    };
    int error = link(target);
    if (error == EEXIST) {
      temporary = std::make_unique<TemporaryName>(FolderOf(target));
      error = link(temporary->Path());
    }
    isNameless = false;
    file.Close();
    return error;
  }

  fs::path target;
  Descriptor file;
  std::unique_ptr<TemporaryName> temporary;
  bool isNameless = false;
};

}  // namespace

std::unique_ptr<PendingFile> MakePendingFile(const fs::path& target) {
  auto file = std::make_unique<PosixPendingFile>(target);
  const int error = file->Make();
  if (error == 0) return file;
  file.reset();
  errno = error;
  return nullptr;
}

}  // namespace orxprint
