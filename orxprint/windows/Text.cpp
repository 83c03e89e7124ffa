#include "orxprint/windows/Text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

namespace orxprint {

namespace {

int LengthOf(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, INT_MAX)); }

struct ErrorPair {
  DWORD system;
  int number;
};

constexpr std::array<ErrorPair, 20> kErrors = {{
    {ERROR_FILE_NOT_FOUND, ENOENT},      {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_INVALID_NAME, ENOENT},        {ERROR_BAD_PATHNAME, ENOENT},
    {ERROR_INVALID_DRIVE, ENOENT},       {ERROR_BAD_NETPATH, ENOENT},
    {ERROR_ACCESS_DENIED, EACCES},       {ERROR_SHARING_VIOLATION, EACCES},
    {ERROR_LOCK_VIOLATION, EACCES},      {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_TOO_MANY_OPEN_FILES, EMFILE}, {ERROR_INVALID_HANDLE, EBADF},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},   {ERROR_OUTOFMEMORY, ENOMEM},
    {ERROR_DISK_FULL, ENOSPC},           {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {ERROR_BROKEN_PIPE, EPIPE},          {ERROR_NO_DATA, EPIPE},
    {ERROR_PIPE_BUSY, EAGAIN},           {ERROR_ALREADY_EXISTS, EEXIST},
}};

}  // namespace

std::wstring WideText(std::string_view utf8) {
  const int length = LengthOf(utf8.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), size);
  return wide;
}

std::string Utf8Text(std::wstring_view wide) {
  const int length = LengthOf(wide.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

int TakeLastError() noexcept {
  const DWORD last = GetLastError();
  const auto* const known = std::find_if(
      kErrors.begin(), kErrors.end(), [&](const ErrorPair& pair) { return pair.system == last; });
  errno = known == kErrors.end() ? EIO : known->number;
  return errno;
}

}  // namespace orxprint
