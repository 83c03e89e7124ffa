// An output that appears under its name only when it is complete.
//
// Bytes go to a file with a temporary name in the same folder, which takes the final name on
// Commit and is removed otherwise. Standard output ("-") and devices get their bytes on Commit.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace orxprint {

class OutputFile {
public:
  // Throws Failure when the name cannot be written to.
  explicit OutputFile(std::string outputName);
  OutputFile(OutputFile&& other) noexcept;
  OutputFile& operator=(OutputFile&&) = delete;
  ~OutputFile();

  [[nodiscard]] const std::string& Name() const { return name; }
  // Returns whether the bytes were taken.
  bool Write(std::string_view bytes) noexcept;
  // No more bytes will come. Throws Failure when some could not be written.
  void Close();
  // Gives the output its name. REQUIRES: closed. Throws Failure.
  void Commit();

private:
  [[noreturn]] void Fail(int errorCode) const;

  std::string name;
  std::filesystem::path target;     // with symbolic links followed
  std::filesystem::path temporary;  // empty: the bytes are kept in `kept`
  std::FILE* file = nullptr;
  std::string kept;
  int writeError = 0;
};

}  // namespace orxprint
