// The names of the files that drawings go to.
//
// Pure functions on text: where a name's ending is, and where a page number goes. What a name means
// to the file system is for OutputFile.h and Outputs.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orxprint {

// The place of a file name's ending: of its last dot, or of its end when there is none.
[[nodiscard]] std::size_t EndingPosition(std::string_view fileName);

// "name.svg" for "name-2.svg"; a name without a number as it is.
[[nodiscard]] std::string WithoutPageNumber(std::string name);

// The name of a drawing, of which the names of its pages are made.
class OutputName {
public:
  // A name that means itself, as those of documents do.
  [[nodiscard]] static OutputName Plain(std::string name);
  // A name that the person typed for outputs. Behind the last slash "%d" is the place of the page
  // number, "%03d" with leading zeros, and "%%" stands for "%".
  [[nodiscard]] static OutputName Typed(std::string_view pattern);

  [[nodiscard]] bool HasNumberPlace() const { return hasPlace; }
  // The name without a number.
  [[nodiscard]] std::string Whole() const { return front + back; }
  // The name for one page: the number in its place, or else before the ending as in "name-2.svg",
  // there with as many digits as the greatest number has.
  [[nodiscard]] std::string ForPage(std::uint32_t page, std::uint32_t greatest) const;

private:
  std::string front;  // before the number's place
  std::string back;
  bool hasPlace = false;
  std::size_t digits = 0;  // at least so many in the place
};

}  // namespace orxprint
