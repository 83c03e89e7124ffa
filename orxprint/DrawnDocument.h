// A document drawn for a page for browsers that has no interpreter inside: its pages as SVG, and
// what such a page is told beside them.
//
// A value; it borrows nothing of the session, and memory grows with the drawing.
#pragma once

#include <deque>
#include <string>

#include "drawing/Geometry.h"
#include "orxprint/JsonText.h"
#include "orxprint/Session.h"

namespace orxprint {

struct DrawnPage {
  orxdrawing::Box area;  // in points
  std::string svg;
};

struct DrawnDocument {
  std::deque<DrawnPage> pages;
  // {"messages": [text], "findings": {"items": [...], "drawn": text}}, as the page's scripts have
  // them from the interpreter; places are bytes of the document.
  Json report;
};

// Draws all pages, as far as the session's limits allow. Throws Failure and Stopped.
[[nodiscard]] DrawnDocument DrawDocument(Session& session);

}  // namespace orxprint
