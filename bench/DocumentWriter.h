// Puts a document together, with numbers as programs write them and a sequence of random numbers of
// its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace orxbench {

class DocumentWriter {
public:
  // Begins with the comments and a prolog of short names for the common operators.
  explicit DocumentWriter(std::size_t bytes);

  // Whether the document is still short of the size it was asked to have.
  [[nodiscard]] bool IsWanted() const noexcept { return text.size() < size; }
  [[nodiscard]] std::size_t BytesWanted() const noexcept {
    return IsWanted() ? size - text.size() : 0;
  }

  DocumentWriter& Add(std::string_view piece) {
    text += piece;
    return *this;
  }
  // Each number is followed by a blank.
  DocumentWriter& Integer(int value);
  // `value` of 10^-decimals, written with all its decimals.
  DocumentWriter& Decimal(int value, int decimals);

  // One of low ... high.
  [[nodiscard]] int Random(int low, int high) {
    return low + static_cast<int>(random() % static_cast<std::uint32_t>(high - low + 1));
  }
  // Hundredths somewhere on the page: "%.2f %.2f ".
  DocumentWriter& PointOnPage() {
    return Decimal(Random(2000, 59000), 2).Decimal(Random(2000, 77000), 2);
  }

  // Ends the document and hands it out.
  [[nodiscard]] std::string Finish();

private:
  const std::size_t size;
  std::string text;
  std::mt19937 random{20};
};

}  // namespace orxbench
