// A document that the person named: opened once, looked through once, and ready to be read by as
// many runs as needed, each over a stream of its own.
//
// A value: copies share the bytes, so a run that is left behind can keep one.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "drawing/DocumentComments.h"
#include "framework/InputStreams.h"
#include "orxprint/DocumentSource.h"
#include "orxprint/RunControl.h"

namespace orxprint {

using orxdrawing::Box;
using orxdrawing::DocumentComments;

// A part of a source as an interpreter's input. It seems to end when the run is being stopped, for
// interpreters that ask nobody whether to go on. Borrows the control.
class DocumentStream final : public orxframework::WindowedInputStream {
public:
  DocumentStream(std::shared_ptr<DocumentSource> source, orxframework::FileSection section,
                 RunControl& runControl);

  // How much of the document has been read, in per cent. May be asked on any thread.
  [[nodiscard]] unsigned PercentRead() const noexcept;

private:
  Window Load(std::uint64_t position) override;

  std::shared_ptr<DocumentSource> bytes;
  orxframework::FileSection part;
  RunControl& control;
  std::array<char, 1 << 16> buffer{};
  std::atomic<std::uint64_t> place = 0;
};

class Document {
public:
  // Opens a file, or standard input for "-", and looks through it; a file with a preview in front
  // is reduced to its PostScript section. Throws Failure, or Stopped when the control ends it
  // before the end of the document was seen.
  Document(std::string fileName, RunControl& control);

  [[nodiscard]] const std::string& Name() const { return name; }
  [[nodiscard]] bool IsStandardInput() const { return name == "-"; }
  [[nodiscard]] const DocumentComments& Comments() const { return *comments; }

  // What the preview in front of the document is, a literal: "wmf", "tiff", "none" in a header
  // without one; empty without a header.
  [[nodiscard]] std::string_view Preview() const { return preview; }
  // Where the PostScript section begins in the file.
  [[nodiscard]] std::uint64_t Offset() const { return section.offset; }
  // Bytes of the section from a place in it on; fewer at its end and where they cannot be read.
  std::size_t Read(std::uint64_t place, char* buffer, std::size_t count) const;

  // A new stream at the start of the document.
  [[nodiscard]] std::unique_ptr<DocumentStream> MakeStream(RunControl& control) const;
  // Throws Failure when not all that was read is what the document held when it was opened.
  void RequireUnchanged() const { source->Require(); }

private:
  std::string name;
  std::shared_ptr<DocumentSource> source;
  orxframework::FileSection section;
  std::string_view preview;
  std::shared_ptr<const DocumentComments> comments;
};

}  // namespace orxprint
