// A document that the person named: found, opened once to look at it, and ready to be read by as
// many runs as needed, each over a stream of its own.
//
// A value: copies share what was read into memory, so a run that is left behind can keep one.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "framework/InputStreams.h"
#include "orxprint/DocumentComments.h"
#include "orxprint/RunControl.h"

namespace orxprint {

class Document {
public:
  // Opens a file, or standard input for "-", and looks through it as the work of a run under
  // control. A file with a preview in front is reduced to its PostScript section. Throws Failure.
  Document(std::string fileName, RunControl& control);

  [[nodiscard]] const std::string& Name() const { return name; }
  [[nodiscard]] bool IsStandardInput() const { return name == "-"; }
  [[nodiscard]] const DocumentComments& Comments() const { return *comments; }

  // A new stream at the start of the document; this document must outlive it.
  [[nodiscard]] std::unique_ptr<orxframework::WindowedInputStream> MakeStream() const;
  // The same over the comment lines alone, for questions about pages.
  [[nodiscard]] std::unique_ptr<orxframework::WindowedInputStream> MakeCommentStream() const;

private:
  std::string name;
  std::shared_ptr<const std::string> bytes;  // null for a file that is read where it lies
  orxframework::FileSection section;
  std::shared_ptr<const DocumentComments> comments;
};

// Opens a document within its limits and warns when it does not begin like one. Throws Failure, or
// Stopped when a limit was met before the end of the document was seen.
[[nodiscard]] Document OpenDocument(const std::string& name, const Limits& limits);

}  // namespace orxprint
