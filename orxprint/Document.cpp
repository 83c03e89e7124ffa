#include "orxprint/Document.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "orxprint/Failure.h"

namespace orxprint {

namespace {

using orxframework::FileSection;

// A preview in front of the document: a header that says where each part lies, little end first.
constexpr std::string_view kPreviewMark = "\xC5\xD0\xD3\xC6";
constexpr std::size_t kPreviewHeaderBytes = 30;
constexpr std::size_t kOffsetPlace = 4;
constexpr std::size_t kLengthPlace = 8;
constexpr std::size_t kMetafileLengthPlace = 16;
constexpr std::size_t kTiffLengthPlace = 24;

std::uint64_t NumberAt(std::string_view header, std::size_t place) {
  std::uint64_t number = 0;
  for (std::size_t i = 4; i-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(header[place + i]);
  }
  return number;
}

// The part of the document that is PostScript: all of it, unless it begins with a preview header.
FileSection FindPostScript(DocumentSource& source) {
  char buffer[kPreviewHeaderBytes];
  const std::string_view header(buffer, source.Read(0, buffer, kPreviewHeaderBytes));
  if (!header.starts_with(kPreviewMark)) return {0, source.Size()};
  if (header.size() < kPreviewHeaderBytes) throw Failure("its preview header is cut short");
  const FileSection section{NumberAt(header, kOffsetPlace), NumberAt(header, kLengthPlace)};
  if (section.offset < kPreviewHeaderBytes || section.length == 0 ||
      section.offset + section.length > source.Size()) {
    throw Failure("its preview header is damaged: it places the PostScript section (" +
                  std::to_string(section.length) + " bytes from byte " +
                  std::to_string(section.offset) + ") outside the file's " +
                  std::to_string(source.Size()) + " bytes");
  }
  return section;
}

std::string_view FindPreview(DocumentSource& source) {
  char buffer[kPreviewHeaderBytes];
  const std::string_view header(buffer, source.Read(0, buffer, kPreviewHeaderBytes));
  if (!header.starts_with(kPreviewMark)) return "";
  if (NumberAt(header, kTiffLengthPlace) > 0) return "tiff";
  return NumberAt(header, kMetafileLengthPlace) > 0 ? "wmf" : "none";
}

}  // namespace

DocumentStream::DocumentStream(std::shared_ptr<DocumentSource> source, FileSection section,
                               RunControl& runControl)
    : bytes(std::move(source)), part(section), control(runControl) {
  SetSize(part.length);
}

unsigned DocumentStream::PercentRead() const noexcept {
  return part.length == 0 ? 100 : static_cast<unsigned>(100 * place.load() / part.length);
}

orxframework::WindowedInputStream::Window DocumentStream::Load(std::uint64_t position) {
  if (!control.MayGoOn()) return {};
  const std::size_t wanted =
      static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), Size() - position));
  const std::size_t count = bytes->Read(part.offset + position, buffer.data(), wanted);
  if (count == 0) return {};
  place = position + count;
  return {buffer.data(), buffer.data() + count, position};
}

Document::Document(std::string fileName, RunControl& control)
    : name(std::move(fileName)),
      source(std::make_shared<DocumentSource>(name, control)),
      section(FindPostScript(*source)),
      preview(FindPreview(*source)) {
  const orxdrawing::ByteReader read = [&](std::uint64_t place, char* buffer, std::size_t count) {
    control.Require();
    return Read(place, buffer, count);
  };
  comments = std::make_shared<const DocumentComments>(orxdrawing::ReadComments(read));
  RequireUnchanged();
}

std::size_t Document::Read(std::uint64_t place, char* buffer, std::size_t count) const {
  if (place >= section.length) return 0;
  count = static_cast<std::size_t>(std::min<std::uint64_t>(count, section.length - place));
  return source->Read(section.offset + place, buffer, count);
}

std::unique_ptr<DocumentStream> Document::MakeStream(RunControl& control) const {
  return std::make_unique<DocumentStream>(source, section, control);
}

}  // namespace orxprint
