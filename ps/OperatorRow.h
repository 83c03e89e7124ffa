// What the interpreter knows of an operator, all of it in one row. Everything else is derived from
// the rows: what is in systemdict, how names are executed, the names of binary tokens, the check of
// the operands, the counting.
//
// Each room lists its own operators; who puts a machine together joins the lists into one table. A
// handler's signature names what it touches, a Machine or one of the parts that other rooms add to
// it, and Row finds these in the machine's owner:
//
//   template <typename Owner>
//   inline constexpr OperatorRow kPathOperators[] = {
//       Row<Owner, operators::MoveTo>({.name = "moveto", .position = 34, .operands = 2}),
//
// An owner is a class that derives from Machine and has an overload of PartOf(Owner&, Part*) for
// each part; the pointer only selects.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace orxeps {

class Machine;

// What an operator answers. No caller acts on it: interpretation goes on with the next object.
enum class ResultCode : int {
  Ran = 0,              // including what an operator silently ignores
  Failed = 1,           // in most cases an error was raised
  NoOperand = 2,        // an operand was missing, or not of the kind that the operator works on
  UnknownOperator = 3,  // no operator has this name
};

inline constexpr int kNoIndex = -1;
inline constexpr int kNotCounted = -1;

struct OperatorTraits {
  std::string_view name;
  int position = 0;                // in the system's order, from 1
  std::int32_t operands = 0;       // with fewer on the stack it raises stackunderflow
  int systemNameIndex = kNoIndex;  // in the binary encoding of the PostScript language
  int counter = kNotCounted;       // which of the machine's counters goes up after each run
};

struct OperatorRow : OperatorTraits {
  ResultCode (*run)(Machine&) = nullptr;
};

template <typename Owner, typename... Parts>
ResultCode CallHandler(Machine& machine, ResultCode (*handler)(Parts&...)) {
  auto& owner = static_cast<Owner&>(machine);
  return handler(PartOf(owner, static_cast<Parts*>(nullptr))...);
}

template <typename Owner, auto Handler>
constexpr OperatorRow Row(OperatorTraits traits) {
  return {traits, [](Machine& machine) { return CallHandler<Owner>(machine, Handler); }};
}

// The operators of one kind of machine.
class OperatorTable {
public:
  // `rows` is borrowed and must outlive the table.
  constexpr explicit OperatorTable(std::span<const OperatorRow> rows) noexcept : all(rows) {
    for (const OperatorRow& row : rows) {
      if (row.systemNameIndex != kNoIndex) {
        bySystemName[static_cast<std::size_t>(row.systemNameIndex)] = &row;
      }
    }
  }
  [[nodiscard]] constexpr std::span<const OperatorRow> Rows() const noexcept { return all; }
  // The row that a binary token names by its index, or null.
  [[nodiscard]] constexpr const OperatorRow* WithSystemName(unsigned char index) const noexcept {
    const OperatorRow* const row = bySystemName[index];
    return row;
  }

private:
  std::span<const OperatorRow> all;
  std::array<const OperatorRow*, 256> bySystemName{};
};

}  // namespace orxeps
