// What the functions for the worker's script have in common: the documents that are open, one or,
// in a comparison, two, and how answers leave.
//
// One set for each instance of the library, which serves one worker.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "web/ComparedDocuments.h"
#include "web/OpenDocument.h"

namespace orxweb {

struct ExportedDrawing {
  // Of a comparison the earlier and the later one, else one only.
  std::array<std::unique_ptr<OpenDocument>, 2> documents;
  std::unique_ptr<ComparedDocuments> comparison;

  static ExportedDrawing& Open();
  [[nodiscard]] const OpenDocument& Side(int side) const {
    return *documents.at(static_cast<std::size_t>(side));
  }
  // The place in the file, or -1.
  [[nodiscard]] double InFile(int side, std::uint64_t place) const;
};

// Text as it is, and text that comes from a document; valid until the next answer.
[[nodiscard]] const char* Answer(std::string_view text);
[[nodiscard]] const char* AnswerEscaped(std::string_view text);

}  // namespace orxweb
