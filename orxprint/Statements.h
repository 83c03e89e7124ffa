// What a document says of itself in its structure comments, each with its line.
//
// Documents inside the document keep their comments to themselves, and behind its end nothing
// counts. However long or many they are, little of them is kept.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/Geometry.h"

namespace orxprint {

using orxdrawing::Box;

struct Statement {
  std::string text;
  std::uint64_t line = 0;  // from 1
};

struct StatedBox {
  std::string_view comment;  // a literal such as "%%BoundingBox"
  std::uint32_t page = 0;    // 0: the whole document
  std::optional<Box> box;    // none: it is not four numbers with an area
  std::uint64_t line = 0;
};

struct Statements {
  static constexpr std::size_t kMostTextBytes = 1000;
  static constexpr std::size_t kMostBoxes = 20'000;
  static constexpr std::size_t kMostOtherBoxes = 100;
  static constexpr std::size_t kMostNames = 1000;

  // The first line that is not blank begins with "%!".
  bool isPostScript = false;
  std::string dscVersion;   // "3.0"; empty: it does not claim to follow the conventions
  std::string epsfVersion;  // the same
  bool hasBitmapPreview = false;
  std::optional<Statement> title;
  std::optional<Statement> creator;
  std::optional<Statement> madeFor;
  std::optional<Statement> date;
  std::optional<Statement> languageLevel;
  std::vector<StatedBox> boxes;
  // Boxes of the document after the first, and those of documents inside: the library may take its
  // answers from them.
  std::vector<StatedBox> otherBoxes;
  std::vector<std::string> fonts;      // wanted, each once
  std::vector<std::string> resources;  // the same, as "procset Name"
  bool areNamesLeftOut = false;
};

// Gives bytes of the document from a place on: fewer than asked for only at its end.
[[nodiscard]] Statements ReadStatements(
    const std::function<std::size_t(std::uint64_t place, char* buffer, std::size_t count)>& read);

}  // namespace orxprint
