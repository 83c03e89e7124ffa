// The documents that hosts hand to interpreters: a file on disk, or bytes in memory.
//
// Both honour the contract of PrintInputStream to the letter and share one implementation of it:
// a window of bytes with a place in it, so that reading a byte is a comparison and a load. What
// differs is how the next window comes. A new stream stands open at its first byte; between Close
// and Open everything fails. A stream is used by one thread at a time and cannot be copied.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "host/ORXFrameworkApi.h"
#include "host/PrintInputStream.h"

namespace orxframework {

// Invariants: `current` to `end` are the bytes that can be read without further ado. They lie in
// the window, or in the push-back slot; `resume` is then the place in the window where reading goes
// on. Bytes between `stepLimit` and `current` have been read since
// anything else happened, so that pushing the last of them back is a step.
class ORX_FRAMEWORK_API WindowedInputStream : public PrintInputStream {
public:
  WindowedInputStream(const WindowedInputStream&) = delete;
  WindowedInputStream& operator=(const WindowedInputStream&) = delete;
  virtual ~WindowedInputStream() = default;

  int Open(const char* mode) final;
  int Read(void* buffer, int count, int* countRead) final;
  int ReadByte(char* byte) final {
    if (current == end) return ReadByteBeyond(byte);
    *byte = *current++;
    return 0;
  }
  // A position behind the data is taken as its end.
  int SetPosition(unsigned position) final;
  // The place aimed at is moved into the data; fails for any other origin than 0 and 2.
  int Seek(int offset, int origin) final;
  int UnreadByte(char byte) final;
  // Fails where 32 bits cannot tell the position.
  int GetPosition(unsigned* position) final;
  int IsReadable() final;
  int Close() final;
  int HasMoreData() final;
  int GetState() final;
  int ClearEndOfFile() final;

  // Bytes in all. A file that turns out to be shorter than it was corrects this.
  [[nodiscard]] std::uint64_t Size() const noexcept { return size; }

protected:
  WindowedInputStream() noexcept = default;

  // Bytes of the data that begin at `position`; null when they cannot be had.
  struct Window {
    const char* begin = nullptr;
    const char* end = nullptr;
    std::uint64_t position = 0;
  };
  // The window around a position below Size(). It replaces the one given before.
  virtual Window Load(std::uint64_t position) = 0;
  // To be called once by the constructor of the derived class.
  void SetSize(std::uint64_t byteCount) noexcept { size = byteCount; }

private:
  int ReadByteBeyond(char* byte);
  bool Advance();
  void LoadNextWindow();
  void MoveTo(std::uint64_t position) noexcept;
  [[nodiscard]] std::uint64_t Position() const noexcept;
  [[nodiscard]] bool IsInSlot() const noexcept { return end == &slot + 1; }

  const char* current = nullptr;
  const char* end = nullptr;
  const char* stepLimit = nullptr;
  const char* resume = nullptr;
  Window window;
  std::uint64_t size = 0;
  char slot = 0;
  bool isOpen = true;
  bool hasMoreData = true;
};

// Bytes in memory, borrowed unless a string is moved in.
class ORX_FRAMEWORK_API MemoryInputStream final : public WindowedInputStream {
public:
  // Borrows: the bytes must outlive the stream.
  explicit MemoryInputStream(std::string_view borrowed) noexcept;
  explicit MemoryInputStream(const char* borrowed) noexcept;
  explicit MemoryInputStream(std::string&& bytes) noexcept;

private:
  Window Load(std::uint64_t position) override;

  std::string own;
  std::string_view data;
};

// A part of a file; reaching over the file's end, it is what there is.
struct FileSection {
  std::uint64_t offset = 0;
  std::uint64_t length = UINT64_MAX;
};

// A file that can be positioned, or a section of it. It is opened once and stays open as long as
// the stream lives; 64 KiB of it are in memory, however large it is. A read that fails in the
// middle is taken as the end of the data.
class ORX_FRAMEWORK_API FileInputStream final : public WindowedInputStream {
public:
  explicit FileInputStream(const std::filesystem::path& path, FileSection fileSection = {});

  // 0, or the errno value that says why the file could not be opened. The stream is then empty.
  // Pipes give ESPIPE: read those into memory.
  [[nodiscard]] int ErrorCode() const noexcept { return errorCode; }
  // The same in words.
  [[nodiscard]] std::string ErrorText() const;

private:
  struct FileCloser {
    void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
  };

  int OpenFile(const std::filesystem::path& path);
  Window Load(std::uint64_t position) override;

  std::unique_ptr<std::FILE, FileCloser> file;
  std::unique_ptr<char[]> buffer;
  FileSection section;
  int errorCode = 0;
};

}  // namespace orxframework
