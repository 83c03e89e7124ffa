// What is odd about a file itself, whatever its program draws.
//
// Boxes, page counts, labels, headers: what the comments claim is compared with what was drawn. It
// reads the document and keeps nothing.
#pragma once

#include "drawing/Findings.h"
#include "orxprint/Document.h"
#include "orxprint/PageAnswers.h"
#include "orxprint/Session.h"

namespace orxprint {

// Adds to what was found while the document was drawn. `answers` are the library's.
void CheckFile(const Document& document, const PageAnswers& answers, Units units,
               orxdrawing::Findings& findings);

}  // namespace orxprint
