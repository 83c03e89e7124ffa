#include "orxprint/OutputFile.h"

#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include "orxprint/Failure.h"
#include "orxprint/Platform.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr int kMostTemporaryNames = 100;

// What a chain of symbolic links ends at, so that the link stays and its target is replaced.
fs::path FollowLinks(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  const fs::path followed = fs::weakly_canonical(path, error);
  return error ? path : followed;
}

}  // namespace

OutputFile::OutputFile(std::string outputName)
    : name(std::move(outputName)), target(FollowLinks(name)) {
  if (name == "-") return;
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_directory(status)) Fail(EISDIR);
  if (fs::is_other(status)) return;
  for (int i = 0; i < kMostTemporaryNames && !file; ++i) {
    temporary = target;
    temporary += ".part" + std::to_string(ProcessNumber()) + "-" + std::to_string(i);
    file = std::fopen(temporary.string().c_str(), "wbx");
    if (!file && errno != EEXIST) break;
  }
  if (file) return;
  const int openError = errno;
  temporary.clear();
  Fail(openError);
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : name(std::move(other.name)),
      target(std::move(other.target)),
      temporary(std::exchange(other.temporary, {})),
      file(std::exchange(other.file, nullptr)),
      kept(std::move(other.kept)),
      writeError(other.writeError) {}

OutputFile::~OutputFile() {
  if (file) std::fclose(file);
  std::error_code ignored;
  if (!temporary.empty()) fs::remove(temporary, ignored);
}

bool OutputFile::Write(std::string_view bytes) noexcept {
  if (writeError) return false;
  if (file) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) writeError = errno;
    return writeError == 0;
  }
  try {
    kept += bytes;
  } catch (const std::bad_alloc&) {
    writeError = ENOMEM;
  }
  return writeError == 0;
}

void OutputFile::Close() {
  if (file && std::fclose(std::exchange(file, nullptr)) != 0 && !writeError) writeError = errno;
  if (writeError) Fail(writeError);
}

void OutputFile::Commit() {
  if (!temporary.empty()) {
    std::error_code error;
    const fs::file_status replaced = fs::status(target, error);
    if (fs::is_regular_file(replaced)) fs::permissions(temporary, replaced.permissions(), error);
    fs::rename(temporary, target, error);
    if (error) Fail(error.value());
    temporary.clear();
    return;
  }
  std::FILE* stream = name == "-" ? stdout : std::fopen(target.string().c_str(), "wb");
  if (!stream) Fail(errno);
  const bool isWritten =
      std::fwrite(kept.data(), 1, kept.size(), stream) == kept.size() && std::fflush(stream) == 0;
  const int error = errno;
  if (stream != stdout) std::fclose(stream);
  if (!isWritten) Fail(error);
}

void OutputFile::Fail(int errorCode) const {
  const std::string subject = name == "-" ? "standard output" : name;
  throw Failure("cannot write " + subject + ": " + std::generic_category().message(errorCode));
}

}  // namespace orxprint
