#include "orxprint/DocumentSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "orxprint/Failure.h"
#include "orxprint/Platform.h"

namespace orxprint {

namespace {

constexpr std::size_t kMostBytesInMemory = std::size_t{1} << 20;
// What lies behind has no position that the library could name, and a device may have no end.
constexpr std::uint64_t kMostKeptBytes = std::uint64_t{4} << 30;
constexpr auto kLook = std::chrono::milliseconds(50);

[[noreturn]] void FailToOpen(int error) {
  if (error == ENOENT) throw Failure("no such file");
  throw Failure("cannot be opened: " + ErrorText(error));
}

[[noreturn]] void FailToRead(int error) { throw Failure("cannot be read: " + ErrorText(error)); }

bool IsSameTime(const std::timespec& a, const std::timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

DocumentSource::DocumentSource(const std::string& name, RunControl& control) {
  if (name == "-") {
    file = Descriptor(dup(STDIN_FILENO));
    if (!file.IsOpen()) FailToRead(errno);
  } else {
    OpenFile(name);
  }
  struct stat status {};
  if (fstat(file.Number(), &status) != 0) FailToRead(errno);
  if (S_ISDIR(status.st_mode)) throw Failure("is a directory");
  if (!S_ISREG(status.st_mode)) {
    ReadThrough(control);
    return;
  }
  canChange = true;
  length = status.st_size;
  changed = status.st_mtim;
  // Standard input may stand in the middle of a file, and is read to its end.
  const off_t place = lseek(file.Number(), 0, SEEK_CUR);
  origin = static_cast<std::uint64_t>(std::clamp<off_t>(place, 0, length));
  size = static_cast<std::uint64_t>(length) - origin;
  if (name == "-") lseek(file.Number(), 0, SEEK_END);
}

void DocumentSource::OpenFile(const std::string& name) {
  // A pipe without a writer would keep the opening waiting; the waiting is done where it can end.
  file = Descriptor(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.IsOpen()) FailToOpen(errno);
}

void DocumentSource::ReadThrough(RunControl& control) {
  const Descriptor input = std::move(file);
  file = Descriptor();
  char block[1 << 16];
  while (true) {
    while (!WaitForInput(input.Number(), kLook)) control.Require();
    control.Require();
    const Transfer transfer = ReadSome(input.Number(), block, sizeof block);
    if (transfer.error == EAGAIN) continue;
    if (transfer.error != 0) FailToRead(transfer.error);
    if (transfer.count == 0) return;
    if (size + transfer.count > kMostKeptBytes) throw Stopped{Stop::InputLimit};
    Keep({block, transfer.count});
  }
}

void DocumentSource::Keep(std::string_view bytes) {
  if (!file.IsOpen() && kept.size() + bytes.size() > kMostBytesInMemory) MoveToTemporaryFile();
  size += bytes.size();
  if (!file.IsOpen()) {
    kept += bytes;
    return;
  }
  const int error = WriteAll(file.Number(), bytes, {});
  if (error != 0) throw Failure("cannot be kept in a temporary file: " + ErrorText(error));
}

void DocumentSource::MoveToTemporaryFile() {
  file = OpenNamelessFile(TemporaryFolder());
  if (!file.IsOpen()) throw Failure("cannot be kept in a temporary file: " + ErrorText(errno));
  const int error = WriteAll(file.Number(), kept, {});
  if (error != 0) throw Failure("cannot be kept in a temporary file: " + ErrorText(error));
  kept = {};
}

std::size_t DocumentSource::Read(std::uint64_t offset, char* buffer, std::size_t count) noexcept {
  if (offset >= size) return 0;
  if (!file.IsOpen()) {
    count = std::min<std::size_t>(count, kept.size() - static_cast<std::size_t>(offset));
    std::memcpy(buffer, kept.data() + offset, count);
    return count;
  }
  const Transfer transfer =
      ReadAt(file.Number(), origin + offset, buffer, std::min<std::uint64_t>(count, size - offset));
  if (transfer.error != 0) readError = transfer.error;
  return transfer.count;
}

void DocumentSource::Require() const {
  if (readError != 0) FailToRead(readError);
  if (!canChange) return;
  struct stat status {};
  if (fstat(file.Number(), &status) != 0) FailToRead(errno);
  if (status.st_size == length && IsSameTime(status.st_mtim, changed)) return;
  throw Failure("was changed while it was read");
}

}  // namespace orxprint
