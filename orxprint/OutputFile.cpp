#include "orxprint/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include "orxprint/Failure.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferBytes = 1 << 16;
constexpr std::size_t kMostBytesInMemory = std::size_t{1} << 20;
constexpr int kMostLinks = 40;
// Every nameless file stays open until it gets its name; descriptors from here on are left to
// others.
constexpr int kMostDescriptors = 128;
constexpr auto kBetweenLooks = std::chrono::milliseconds(20);
constexpr mode_t kRights = 0777;

// What a chain of symbolic links ends at, whether there is a file or not, so that the links stay.
// None when it has no end.
std::optional<fs::path> FollowLinks(fs::path path) {
  std::error_code error;
  for (int links = 0; links < kMostLinks; ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) return path;
    path = path.parent_path() / next;
  }
  return std::nullopt;
}

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

mode_t RightsOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

std::string PathOfDescriptor(int file) { return "/proc/self/fd/" + std::to_string(file); }

}  // namespace

std::optional<FileIdentity> IdentityOf(const std::string& name) {
  struct stat status {};
  if (stat(name.c_str(), &status) != 0) return std::nullopt;
  return FileIdentity{status.st_dev, status.st_ino};
}

std::optional<FilePlace> PlaceOf(const std::string& name) {
  const std::optional<fs::path> target = FollowLinks(name);
  if (!target || DescriptorOfName(name)) return std::nullopt;
  struct stat status {};
  if (stat(target->c_str(), &status) == 0 && !S_ISREG(status.st_mode)) return std::nullopt;
  const std::optional<FileIdentity> folder = IdentityOf(FolderOf(*target).string());
  if (!folder) return std::nullopt;
  return FilePlace{*folder, target->filename().string()};
}

OutputFile::OutputFile(std::string outputName) : name(std::move(outputName)) {
  if (DescriptorOfName(name)) return;
  const std::optional<fs::path> end = FollowLinks(name);
  if (!end) Fail(ELOOP);
  target = *end;
  struct stat status {};
  const bool exists = stat(target.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) Fail(EISDIR);
  if (exists && !S_ISREG(status.st_mode)) return;
  MakeTemporary();
}

void OutputFile::MakeTemporary() {
  const fs::path folder = FolderOf(target);
#if defined(O_TMPFILE)
  if (access("/proc/self/fd", X_OK) == 0) {
    file = Descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    isNameless = file.IsOpen() && file.Number() < kMostDescriptors;
    if (isNameless) return;
  }
#endif
  temporary = std::make_unique<TemporaryName>(folder);
  file = Descriptor(open(temporary->Path().c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0600));
  if (file.IsOpen()) return;
  const int error = errno;
  temporary->Release();
  Fail(error);
}

bool OutputFile::Write(std::string_view bytes) noexcept {
  if (writeError) return false;
  try {
    kept += bytes;
  } catch (const std::bad_alloc&) {
    writeError = ENOMEM;
    return false;
  }
  if (kept.size() < kBufferBytes) return true;
  if (!file.IsOpen() && kept.size() < kMostBytesInMemory) return true;
  return HasPlaceForMany() && Flush();
}

bool OutputFile::HasPlaceForMany() noexcept {
  if (file.IsOpen()) return true;
  try {
    file = OpenNamelessFile(TemporaryFolder());
    isSpool = file.IsOpen();
    if (!isSpool) writeError = errno;
  } catch (const std::exception&) {
    writeError = ENOMEM;
  }
  return isSpool;
}

template <typename Take>
int OutputFile::ReadBack(Take take) {
  std::uint64_t place = 0;
  std::vector<char> block(file.IsOpen() ? kBufferBytes : 0);
  while (!block.empty()) {
    const Transfer read = ReadAt(file.Number(), place, block.data(), block.size());
    if (read.error != 0) return read.error;
    if (read.count == 0) break;
    if (const int error = take(std::string_view(block.data(), read.count))) return error;
    place += read.count;
  }
  return take(kept);
}

void OutputFile::MoveTo(const std::string& newName) {
  Require(writeError);
  OutputFile moved(newName);
  moved.Require(
      ReadBack([&](std::string_view bytes) { return moved.Write(bytes) ? 0 : moved.writeError; }));
  *this = std::move(moved);
}

bool OutputFile::Flush() noexcept {
  if (!writeError) writeError = WriteAll(file.Number(), kept, {});
  kept.clear();
  return writeError == 0;
}

void OutputFile::Close() {
  if (file.IsOpen()) {
    Flush();
    Require(writeError);
    if (isSpool) return;
    TakeOverRights();
    if (fsync(file.Number()) != 0 && errno != EINVAL) Fail(errno);
    if (!isNameless) writeError = file.Close();
  }
  Require(writeError);
}

void OutputFile::TakeOverRights() {
  struct stat replaced {};
  mode_t rights = RightsOfNewFiles();
  if (stat(target.c_str(), &replaced) == 0) {
    rights = replaced.st_mode & kRights;
    // Nobody but the administrator may give a file away.
    [[maybe_unused]] const int ignored = fchown(file.Number(), replaced.st_uid, replaced.st_gid);
  }
  if (fchmod(file.Number(), rights) != 0) Fail(errno);
}

void OutputFile::NameTheNameless() {
  const std::string source = PathOfDescriptor(file.Number());
  const auto link = [&source](const std::string& path) {
    return linkat(AT_FDCWD, source.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0
                                                                                            : errno;
  };
  int error = link(target.string());
  if (error == EEXIST) {
    temporary = std::make_unique<TemporaryName>(FolderOf(target));
    error = link(temporary->Path());
  }
  isNameless = false;
  file.Close();
  Require(error);
}

void OutputFile::Commit(const Deadline& deadline) {
  if (isNameless) NameTheNameless();
  if (temporary) {
    if (rename(temporary->Path().c_str(), target.c_str()) != 0) Fail(errno);
    temporary->Release();
  }
  if (kept.empty() && !isSpool) return;
  Descriptor opened;
  std::optional<int> reader = DescriptorOfName(name);
  if (!reader) {
    opened = OpenReader(deadline);
    reader = opened.Number();
  }
  const int error =
      ReadBack([&](std::string_view bytes) { return WriteAll(*reader, bytes, deadline); });
  if (error == ETIMEDOUT) throw Stopped{Stop::TimeLimit};
  Require(error);
  Require(opened.Close());
}

Descriptor OutputFile::OpenReader(const Deadline& deadline) const {
  const int patient = deadline ? O_NONBLOCK : 0;  // a pipe that nobody reads cannot be opened then
  while (true) {
    Descriptor reader(open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | patient));
    if (reader.IsOpen()) return reader;
    if (errno != ENXIO || !deadline) Fail(errno);
    if (Clock::now() >= *deadline) throw Stopped{Stop::TimeLimit};
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

void OutputFile::Require(int error) const {
  if (error != 0) Fail(error);
}

void OutputFile::Fail(int error) const {
  if (error == ENOMEM) throw std::bad_alloc();
  const std::string subject = DescriptorOfName(name) && name == "-" ? "standard output" : name;
  throw Failure("cannot write " + subject + ": " + ErrorText(error));
}

}  // namespace orxprint
