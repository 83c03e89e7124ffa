// A file as the data of an input stream.
#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>

#include "framework/InputStreams.h"

#if !defined(_WIN32)
#  include <unistd.h>
#endif

namespace orxframework {

namespace {

constexpr std::size_t kBufferBytes = std::size_t{64} << 10;

#if defined(_WIN32)
std::FILE* OpenForReading(const std::filesystem::path& path) {
  return _wfopen(path.c_str(), L"rb");
}
int SeekTo(std::FILE* file, std::int64_t offset, int origin) {
  return _fseeki64(file, offset, origin);
}
std::int64_t Tell(std::FILE* file) { return _ftelli64(file); }
std::size_t ReadAt(std::FILE* file, std::int64_t offset, char* buffer, std::size_t wanted) {
  return SeekTo(file, offset, SEEK_SET) == 0 ? std::fread(buffer, 1, wanted, file) : 0;
}
#else
std::FILE* OpenForReading(const std::filesystem::path& path) {
  return std::fopen(path.c_str(), "rbe");
}
int SeekTo(std::FILE* file, std::int64_t offset, int origin) {
  return fseeko(file, offset, origin);
}
std::int64_t Tell(std::FILE* file) { return ftello(file); }
// Leaves the place in the file alone, which a forked child shares.
std::size_t ReadAt(std::FILE* file, std::int64_t offset, char* buffer, std::size_t wanted) {
  std::size_t done = 0;
  while (done < wanted) {
    const ssize_t count = pread(fileno(file), buffer + done, wanted - done,
                                static_cast<off_t>(offset) + static_cast<off_t>(done));
    if (count == 0 || (count < 0 && errno != EINTR)) break;
    if (count > 0) done += static_cast<std::size_t>(count);
  }
  return done;
}
#endif

}  // namespace

FileInputStream::FileInputStream(const std::filesystem::path& path, FileSection fileSection)
    : buffer(std::make_unique<char[]>(kBufferBytes)), section(fileSection) {
  errorCode = OpenFile(path);
  if (errorCode != 0) file.reset();
}

std::string FileInputStream::ErrorText() const {
  return std::generic_category().message(errorCode);
}

int FileInputStream::OpenFile(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return EISDIR;
  errno = 0;
  file.reset(OpenForReading(path));
  if (!file) return errno != 0 ? errno : EIO;
  // The windows of this stream are the only buffer that the bytes need.
  std::setvbuf(file.get(), nullptr, _IONBF, 0);
  if (SeekTo(file.get(), 0, SEEK_END) != 0) return errno;
  const std::int64_t fileSize = Tell(file.get());
  if (fileSize < 0) return errno;
  const auto bytes = static_cast<std::uint64_t>(fileSize);
  section.offset = std::min(section.offset, bytes);
  SetSize(std::min(section.length, bytes - section.offset));
  return 0;
}

WindowedInputStream::Window FileInputStream::Load(std::uint64_t position) {
  const std::size_t wanted =
      static_cast<std::size_t>(std::min<std::uint64_t>(kBufferBytes, Size() - position));
  const auto offset = static_cast<std::int64_t>(section.offset + position);
  const std::size_t count = ReadAt(file.get(), offset, buffer.get(), wanted);
  if (count == 0) return {};
  return {buffer.get(), buffer.get() + count, position};
}

}  // namespace orxframework
