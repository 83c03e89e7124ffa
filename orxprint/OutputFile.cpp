#include "orxprint/OutputFile.h"

#include <cerrno>
#include <exception>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include "orxprint/Failure.h"
#include "orxprint/RunControl.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferBytes = 1 << 16;
constexpr std::size_t kMostBytesInMemory = std::size_t{1} << 20;
constexpr auto kBetweenLooks = std::chrono::milliseconds(20);

}  // namespace

std::optional<FileIdentity> IdentityOf(const std::string& name) {
  const FileStatus status = StatusOf(PathOf(name));
  if (status.kind == FileKind::None) return std::nullopt;
  return status.identity;
}

std::optional<FilePlace> PlaceOf(const std::string& name) {
  if (DescriptorOfName(name)) return std::nullopt;
  const std::optional<fs::path> target = FollowLinks(PathOf(name));
  if (!target) return std::nullopt;
  const FileKind kind = StatusOf(*target).kind;
  if (kind != FileKind::None && kind != FileKind::Regular) return std::nullopt;
  const FileStatus folder =
      StatusOf(target->has_parent_path() ? target->parent_path() : fs::path("."));
  if (folder.kind == FileKind::None) return std::nullopt;
  return FilePlace{folder.identity, NameInFolder(*target)};
}

OutputFile::OutputFile(std::string outputName) : name(std::move(outputName)) {
  if (DescriptorOfName(name)) return;
  const std::optional<fs::path> end = FollowLinks(PathOf(name));
  if (!end) Fail(ELOOP);
  target = *end;
  const FileKind kind = StatusOf(target).kind;
  if (kind == FileKind::Folder) Fail(EISDIR);
  if (kind == FileKind::Other) return;
  file = MakePendingFile(target);
  if (!file) Fail(errno);
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
  if (!Place() && kept.size() < kMostBytesInMemory) return true;
  return HasPlaceForMany() && Flush();
}

std::optional<int> OutputFile::Place() const {
  if (file) return file->Number();
  if (spool.IsOpen()) return spool.Number();
  return std::nullopt;
}

bool OutputFile::HasPlaceForMany() noexcept {
  if (Place()) return true;
  try {
    spool = OpenNamelessFile(TemporaryFolder());
    if (!spool.IsOpen()) writeError = errno;
  } catch (const std::exception&) {
    writeError = ENOMEM;
  }
  return spool.IsOpen();
}

template <typename Take>
int OutputFile::ReadBack(Take take) {
  const std::optional<int> source = Place();
  std::uint64_t place = 0;
  std::vector<char> block(source ? kBufferBytes : 0);
  while (source) {
    const Transfer read = ReadAt(*source, place, block.data(), block.size());
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

// REQUIRES: there is a file.
bool OutputFile::Flush() noexcept {
  if (!writeError) writeError = WriteAll(*Place(), kept, {});
  kept.clear();
  return writeError == 0;
}

void OutputFile::Close() {
  if (Place() && Flush() && file) writeError = file->Finish();
  Require(writeError);
}

void OutputFile::Commit(const Deadline& deadline) {
  if (file) Require(file->TakePlace());
  if (kept.empty() && !spool.IsOpen()) return;
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
  const Waiting waiting = deadline ? Waiting::Refused : Waiting::Allowed;
  while (true) {
    Descriptor reader = OpenToWrite(target, waiting);
    if (reader.IsOpen()) return reader;
    if (errno != EAGAIN || !deadline) Fail(errno);
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
