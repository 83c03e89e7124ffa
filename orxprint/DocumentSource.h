// The bytes of a document, opened once and read at any place by as many readers as like.
//
// A file is read where it lies, through one descriptor that is kept, so that whatever happens to
// its name the bytes stay those of one file; Require says whether they still are what they were.
// What can be read only once - pipes, devices, standard input - is kept: in memory while it is
// small, then in a temporary file that has no name.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "orxprint/Descriptor.h"
#include "orxprint/RunControl.h"

namespace orxprint {

class DocumentSource {
public:
  // "-" is standard input. Throws Failure; or Stopped, when a limit is met before all is read.
  DocumentSource(const std::string& name, RunControl& control);
  // Bytes in memory.
  explicit DocumentSource(std::string content) : kept(std::move(content)), size(kept.size()) {}

  [[nodiscard]] std::uint64_t Size() const noexcept { return size; }
  // Bytes from `offset` on; fewer at the end of the data and where they cannot be read. May be
  // called on several threads at once.
  std::size_t Read(std::uint64_t offset, char* buffer, std::size_t count) noexcept;
  // Throws Failure when a read failed, or the file has been changed since it was opened.
  void Require() const;

private:
  void OpenFile(const std::string& name);
  void ReadThrough(RunControl& control);
  void Keep(std::string_view bytes);
  void MoveToTemporaryFile();

  Descriptor file;
  std::string kept;          // what is read once, until it is too large
  std::uint64_t origin = 0;  // the place of the first byte in the file
  std::uint64_t size = 0;
  bool canChange = false;
  // Of a file that can change: its length and when it was changed last.
  std::uint64_t length = 0;
  std::int64_t changed = 0;
  std::atomic<int> readError = 0;
};

}  // namespace orxprint
