// What the structure comments of a document say to the host itself.
//
// The library answers page counts, sizes and labels; the host reads the same comments once more
// for what the library leaves out: where the lower left corner of a box lies, and how many page
// comments there really are. It also keeps the lines that the library's queries look at, so that
// asking about many pages need not read the whole document for each of them.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/Geometry.h"

namespace orxdrawing {

struct DocumentComments {
  bool startsLikePostScript = false;       // begins with "%!"
  std::optional<Box> box;                  // the document's box
  std::map<std::uint32_t, Box> pageBoxes;  // of the pages that have their own, counted from 1
  // The same with more decimals, for those that state it.
  std::optional<Box> fineBox;
  std::map<std::uint32_t, Box> finePageBoxes;
  std::string title;  // UTF-8, as the header has it; empty where there is none
  std::string creator;
  std::uint32_t pageComments = 0;
  // One entry for each comment at which the interpreter begins a new page: whether it is a page
  // comment. Others that mention a page with a colon, such as "%%EndPage:", count for it, too.
  std::vector<bool> pageStarts;
  // Every line about pages, boxes and the end, as it stands in the document: the queries of the
  // library give the same answers about this text as about the whole document.
  std::string lines;

  // Whether some page may answer another size than the rest.
  [[nodiscard]] bool MentionPageBoxes() const {
    return lines.find("%%PageBoundingBox") != std::string::npos;
  }
  // The box to draw for a page: its own, or the document's.
  [[nodiscard]] std::optional<Box> BoxOfPage(std::uint32_t page) const;
};

// Four numbers: left, bottom, right, top. None when one is missing or the box has no area.
[[nodiscard]] std::optional<Box> ParseBox(std::string_view numbers);

// Gives bytes of the document from a place on: fewer than asked for only at its end.
using ByteReader = std::function<std::size_t(std::uint64_t place, char* buffer, std::size_t count)>;

// Looks through the document from its start to its end. Holds nothing of it but the comments and a
// block, however long its lines are.
[[nodiscard]] DocumentComments ReadComments(const ByteReader& read);

}  // namespace orxdrawing
