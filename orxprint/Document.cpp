#include "orxprint/Document.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>
#include <string_view>
#include <system_error>

#include "host/ORXPrintPropertiesManager.h"
#include "orxprint/Failure.h"
#include "orxprint/GuardedHost.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

using orxframework::FileInputStream;
using orxframework::FileSection;
using orxframework::MemoryInputStream;
using orxframework::WindowedInputStream;

// A preview in front of the document: a header that says where each part lies, little end first.
constexpr std::string_view kPreviewMark = "\xC5\xD0\xD3\xC6";
constexpr std::size_t kPreviewHeaderBytes = 30;
constexpr std::size_t kOffsetPlace = 4;
constexpr std::size_t kLengthPlace = 8;

// What comes from a pipe or a device may have no end.
std::string ReadAll(std::FILE* stream, RunControl& control) {
  std::string bytes;
  char block[1 << 16];
  while (control.MayRead()) {
    const std::size_t count = std::fread(block, 1, sizeof block, stream);
    if (count == 0) break;
    bytes.append(block, count);
    if (ORXPrintPropertiesManager::IsLowMemory(kMemoryShare)) control.StopNow(Stop::MemoryLimit);
  }
  if (std::ferror(stream)) {
    throw Failure("cannot be read: " + std::generic_category().message(errno));
  }
  return bytes;
}

// Pipes and devices can be read only once, and not by position.
std::string ReadSpecialFile(const std::string& name, RunControl& control) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"),
                                                             &std::fclose);
  if (!file) throw Failure("cannot be opened: " + std::generic_category().message(errno));
  return ReadAll(file.get(), control);
}

std::uint64_t NumberAt(std::string_view header, std::size_t place) {
  std::uint64_t number = 0;
  for (std::size_t i = 4; i-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(header[place + i]);
  }
  return number;
}

// The part of the stream that is PostScript: all of it, unless it begins with a preview header.
FileSection FindPostScript(WindowedInputStream& stream) {
  char buffer[kPreviewHeaderBytes];
  int count = 0;
  stream.Read(buffer, kPreviewHeaderBytes, &count);
  const std::string_view header(buffer, static_cast<std::size_t>(count));
  if (!header.starts_with(kPreviewMark)) return {0, stream.Size()};
  if (header.size() < kPreviewHeaderBytes) throw Failure("its preview header is cut short");
  const FileSection section{NumberAt(header, kOffsetPlace), NumberAt(header, kLengthPlace)};
  if (section.offset < kPreviewHeaderBytes || section.length == 0 ||
      section.offset + section.length > stream.Size()) {
    throw Failure("its preview header is damaged: it places the PostScript section (" +
                  std::to_string(section.length) + " bytes from byte " +
                  std::to_string(section.offset) + ") outside the file's " +
                  std::to_string(stream.Size()) + " bytes");
  }
  return section;
}

void RefuseWhatIsNoFile(const std::filesystem::file_status& status) {
  if (status.type() == std::filesystem::file_type::not_found) throw Failure("no such file");
  if (std::filesystem::is_directory(status)) throw Failure("is a directory");
}

}  // namespace

Document::Document(std::string fileName, RunControl& control) : name(std::move(fileName)) {
  if (IsStandardInput()) {
    bytes = std::make_shared<const std::string>(ReadAll(stdin, control));
  } else {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(name, error);
    RefuseWhatIsNoFile(status);
    if (std::filesystem::is_other(status)) {
      bytes = std::make_shared<const std::string>(ReadSpecialFile(name, control));
    }
  }
  section = FindPostScript(*MakeStream());
  const auto stream = MakeStream();
  GuardedInputStream input(control, *stream);
  comments = std::make_shared<const DocumentComments>(ReadComments(input));
}

std::unique_ptr<WindowedInputStream> Document::MakeStream() const {
  if (bytes) {
    return std::make_unique<MemoryInputStream>(
        std::string_view(*bytes).substr(section.offset, section.length));
  }
  auto stream = std::make_unique<FileInputStream>(name, section);
  if (stream->ErrorCode()) throw Failure("cannot be opened: " + stream->ErrorText());
  return stream;
}

std::unique_ptr<WindowedInputStream> Document::MakeCommentStream() const {
  return std::make_unique<MemoryInputStream>(std::string_view(comments->lines));
}

Document OpenDocument(const std::string& name, const Limits& limits) {
  struct Opening {
    std::optional<Document> document;
    std::exception_ptr failure;
  };
  const auto control = std::make_shared<RunControl>();
  const auto opening = std::make_shared<Opening>();
  const auto work = [name, control, opening] {
    try {
      opening->document.emplace(name, *control);
    } catch (const Failure&) {
      opening->failure = std::current_exception();
    }
  };
  Run(control, work, limits, [](std::uint64_t) {});
  if (const std::optional<Stop> stop = control->Reason()) throw Stopped{*stop};
  if (opening->failure) std::rethrow_exception(opening->failure);
  if (!opening->document->Comments().startsLikePostScript) {
    Warn(name, "does not begin with %! as PostScript does");
  }
  return *std::move(opening->document);
}

}  // namespace orxprint
