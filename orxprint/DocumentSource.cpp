#include "orxprint/DocumentSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "orxprint/Failure.h"
#include "orxprint/Files.h"

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

}  // namespace

DocumentSource::DocumentSource(const std::string& name, RunControl& control) {
  if (name == "-") {
    file = OpenStandardInput();
    if (!file.IsOpen()) FailToRead(errno);
  } else {
    OpenFile(name);
  }
  const FileStatus status = StatusOf(file.Number());
  if (status.error != 0) FailToRead(status.error);
  if (status.kind == FileKind::Folder) throw Failure("is a directory");
  if (status.kind != FileKind::Regular) {
    ReadThrough(control);
    return;
  }
  canChange = true;
  length = status.size;
  changed = status.changed;
  // Standard input may stand in the middle of a file, and is read to its end.
  origin = std::min(PlaceIn(file.Number()), length);
  size = length - origin;
  if (name == "-") MoveToEnd(file.Number());
}

void DocumentSource::OpenFile(const std::string& name) {
  // A pipe without a writer would keep the opening waiting; the waiting is done where it can end.
  file = OpenToRead(PathOf(name));
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
  const FileStatus status = StatusOf(file.Number());
  if (status.error != 0) FailToRead(status.error);
  if (status.size == length && status.changed == changed) return;
  throw Failure("was changed while it was read");
}

}  // namespace orxprint
