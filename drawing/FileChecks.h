// What is odd about a file itself, whatever its program draws.
//
// Boxes, page counts, labels, headers: what the comments claim is compared with what was drawn. It
// keeps nothing.
#pragma once

#include <cstdint>
#include <vector>

#include "drawing/DocumentComments.h"
#include "drawing/Findings.h"
#include "drawing/PageAnswers.h"

namespace orxdrawing {

// What is known of a file.
struct CheckedFile {
  const DocumentComments& comments;
  bool hasPreview = false;     // in front of the PostScript
  const PageAnswers& answers;  // of the library: about the document and the pages to ask about
};

// The pages whose labels are compared, for the questions to the library.
[[nodiscard]] std::vector<std::uint32_t> PagesToCheck(const PageAnswers& answers);

// Adds to what was found while the document was drawn, in units of so many points.
void CheckFile(const CheckedFile& file, double pointsPerUnit, Findings& findings);

}  // namespace orxdrawing
