#include "orxprint/Files.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <memory>
#include <random>
#include <string>

#include "orxprint/windows/Text.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr DWORD kSharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Names behind this are taken as they are, and may be as long as the file system allows.
constexpr std::wstring_view kVerbatim = L"\\\\?\\";
constexpr std::wstring_view kVerbatimShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kShare = L"\\\\";

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const noexcept {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};
using OwnedHandle = std::unique_ptr<HANDLE, HandleCloser>;

// Whatever a name means, seen from outside: nothing of it is read.
OwnedHandle OpenToLook(const fs::path& path) {
  return OwnedHandle(CreateFileW(path.c_str(), 0, kSharedByAll, nullptr, OPEN_EXISTING,
                                 FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// Gives the handle to a descriptor, or the error of opening it to errno.
Descriptor DescriptorOf(HANDLE handle, int flags) {
  if (handle == INVALID_HANDLE_VALUE) {
    TakeLastError();
    return {};
  }
  Descriptor file(_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), flags | _O_BINARY));
  if (!file.IsOpen()) CloseHandle(handle);
  return file;
}

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

// Nothing where the file has none, as some that the program was started with.
FileIdentity IdentityOf(HANDLE handle) {
  BY_HANDLE_FILE_INFORMATION found{};
  if (!GetFileInformationByHandle(handle, &found)) return {};
  return {found.dwVolumeSerialNumber, Joined(found.nFileIndexHigh, found.nFileIndexLow)};
}

FileStatus StatusOf(HANDLE handle) {
  const DWORD type = GetFileType(handle);
  if (type == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR) {
    return {FileKind::None, TakeLastError(), {}, 0, 0};
  }
  if (type != FILE_TYPE_DISK) return {FileKind::Other, 0, {}, 0, 0};
  FILE_STANDARD_INFO standard{};
  FILE_BASIC_INFO basic{};
  if (!GetFileInformationByHandleEx(handle, FileStandardInfo, &standard, sizeof standard) ||
      !GetFileInformationByHandleEx(handle, FileBasicInfo, &basic, sizeof basic)) {
    return {FileKind::None, TakeLastError(), {}, 0, 0};
  }
  return {standard.Directory ? FileKind::Folder : FileKind::Regular, 0, IdentityOf(handle),
          static_cast<std::uint64_t>(standard.EndOfFile.QuadPart), basic.LastWriteTime.QuadPart};
}

std::wstring FullPath(const std::wstring& name) {
  std::wstring full(MAX_PATH, L'\0');
  DWORD length = GetFullPathNameW(name.c_str(), MAX_PATH, full.data(), nullptr);
  if (length >= full.size()) {
    full.resize(length);
    length = GetFullPathNameW(name.c_str(), length, full.data(), nullptr);
  }
  full.resize(length);
  return full;
}

std::wstring ToUpper(std::wstring name) {
  CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
  return name;
}

}  // namespace

fs::path PathOf(const std::string& name) {
  const std::wstring full = FullPath(WideText(name));
  const std::wstring_view view = full;
  if (full.empty() || view.starts_with(kVerbatim) || view.starts_with(kDevice)) {
    return full.empty() ? WideText(name) : full;
  }
  if (view.starts_with(kShare)) {
    return std::wstring(kVerbatimShare).append(view.substr(kShare.size()));
  }
  return std::wstring(kVerbatim).append(view);
}

std::string NameOf(const fs::path& path) {
  const std::wstring& native = path.native();
  const std::wstring_view view = native;
  if (view.starts_with(kVerbatimShare)) {
    return "\\\\" + Utf8Text(view.substr(kVerbatimShare.size()));
  }
  return Utf8Text(view.starts_with(kVerbatim) ? view.substr(kVerbatim.size()) : view);
}

FileStatus StatusOf(const fs::path& path) {
  const OwnedHandle handle = OpenToLook(path);
  if (handle.get() == INVALID_HANDLE_VALUE) return {FileKind::None, TakeLastError(), {}, 0, 0};
  return StatusOf(handle.get());
}

FileStatus StatusOf(int file) { return StatusOf(reinterpret_cast<HANDLE>(_get_osfhandle(file))); }

std::optional<fs::path> FollowLinks(fs::path path) {
  const OwnedHandle handle = OpenToLook(path);
  if (handle.get() == INVALID_HANDLE_VALUE) return path;
  std::wstring end(MAX_PATH, L'\0');
  DWORD length = GetFinalPathNameByHandleW(handle.get(), end.data(), MAX_PATH, 0);
  if (length >= end.size()) {
    end.resize(length);
    length = GetFinalPathNameByHandleW(handle.get(), end.data(), length, 0);
  }
  if (length == 0 || length >= end.size()) return path;  // devices have no other name
  end.resize(length);
  return end;
}

std::string NameInFolder(const fs::path& path) {
  return Utf8Text(ToUpper(path.filename().native()));
}

Descriptor OpenToRead(const fs::path& path) {
  // Folders open too, for those who ask what they are.
  return DescriptorOf(CreateFileW(path.c_str(), GENERIC_READ, kSharedByAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr),
                      _O_RDONLY);
}

Descriptor OpenToWrite(const fs::path& path, Waiting) {
  return DescriptorOf(
      CreateFileW(path.c_str(), GENERIC_WRITE, kSharedByAll, nullptr, OPEN_EXISTING, 0, nullptr),
      _O_WRONLY);
}

Descriptor OpenNamelessFile(const fs::path& folder) {
  std::random_device random;
  const fs::path path = folder / ("orxprint-" + std::to_string(random()) + ".tmp");
  return DescriptorOf(
      CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_DELETE, nullptr,
                  CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr),
      _O_RDWR);
}

fs::path TemporaryFolder() {
  std::wstring folder(MAX_PATH + 1, L'\0');
  folder.resize(GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
  return folder;
}

std::uint64_t PlaceIn(int file) {
  const std::int64_t place = _lseeki64(file, 0, SEEK_CUR);
  return place < 0 ? 0 : static_cast<std::uint64_t>(place);
}

void MoveToEnd(int file) { _lseeki64(file, 0, SEEK_END); }

void RemoveFile(const fs::path& path) noexcept { DeleteFileW(path.c_str()); }

}  // namespace orxprint
