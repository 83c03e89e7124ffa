// Under a random name until its end.
#include "orxprint/PendingFile.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <utility>

#include "orxprint/Descriptor.h"
#include "orxprint/TemporaryNames.h"
#include "orxprint/windows/Text.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

class WindowsPendingFile final : public PendingFile {
public:
  explicit WindowsPendingFile(fs::path itsTarget)
      : target(std::move(itsTarget)), temporary(target.parent_path()) {}

  // Returns 0, or the errno value.
  int Make() {
    const HANDLE handle = CreateFileW(temporary.Path().c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
      const int error = TakeLastError();
      temporary.Release();
      return error;
    }
    file =
        Descriptor(_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_RDWR | _O_BINARY));
    if (file.IsOpen()) return 0;
    CloseHandle(handle);
    return EMFILE;
  }

  [[nodiscard]] int Number() const override { return file.Number(); }

  [[nodiscard]] int Finish() override {
    if (_commit(file.Number()) != 0) return errno;
    return file.Close();
  }

  [[nodiscard]] int TakePlace() override {
    const bool isThere = GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES;
    // The former keeps the rights of the file that it replaces.
    const bool isDone = isThere
                            ? ReplaceFileW(target.c_str(), temporary.Path().c_str(), nullptr,
                                           REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0
                            : MoveFileExW(temporary.Path().c_str(), target.c_str(),
                                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    if (!isDone) return TakeLastError();
    temporary.Release();
    return 0;
  }

private:
  fs::path target;
  TemporaryName temporary;
  Descriptor file;
};

}  // namespace

std::unique_ptr<PendingFile> MakePendingFile(const fs::path& target) {
  auto file = std::make_unique<WindowsPendingFile>(target);
  const int error = file->Make();
  if (error == 0) return file;
  file.reset();
  errno = error;
  return nullptr;
}

}  // namespace orxprint
