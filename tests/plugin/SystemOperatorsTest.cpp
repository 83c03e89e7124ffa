// The operators of the whole system.
#include "plugin/SystemOperators.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "ps/Execution.h"
#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

// The system name table of the PostScript language's binary encoding, where the system has an
// operator of that name.
const std::map<int, std::string_view> kSystemNames = {
    {0, "abs"},
    {1, "add"},
    {2, "aload"},
    {5, "arc"},
    {6, "arcn"},
    {9, "array"},
    {11, "astore"},
    {16, "ceiling"},
    {19, "cleartomark"},
    {22, "closepath"},
    {23, "concat"},
    {25, "copy"},
    {27, "counttomark"},
    {38, "currentlinewidth"},
    {39, "currentmatrix"},
    {40, "currentpoint"},
    {43, "curveto"},
    {51, "def"},
    {54, "div"},
    {56, "dup"},
    {59, "eofill"},
    {61, "eq"},
    {62, "exch"},
    {66, "fill"},
    {69, "floor"},
    {75, "get"},
    {77, "grestore"},
    {78, "gsave"},
    {82, "idiv"},
    {84, "if"},
    {85, "ifelse"},
    {86, "image"},
    {88, "index"},
    {95, "itransform"},
    {99, "lineto"},
    {100, "load"},
    {102, "lt"},
    {104, "matrix"},
    {106, "mod"},
    {107, "moveto"},
    {108, "mul"},
    {110, "neg"},
    {111, "newpath"},
    {117, "pop"},
    {127, "rectclip"},
    {133, "rlineto"},
    {134, "rmoveto"},
    {135, "roll"},
    {136, "rotate"},
    {137, "round"},
    {139, "scale"},
    {150, "setgray"},
    {153, "setlinecap"},
    {154, "setlinejoin"},
    {155, "setlinewidth"},
    {156, "setmatrix"},
    {157, "setrgbcolor"},
    {167, "stroke"},
    {169, "sub"},
    {172, "transform"},
    {173, "translate"},
    {186, "where"},
};

TEST(SystemOperators, HaveTheIndicesOfTheBinaryEncoding) {
  for (int index = 0; index < 256; ++index) {
    const auto found = kSystemNames.find(index);
    const std::string name(found == kSystemNames.end() ? "" : found->second);
    EXPECT_EQ(StackAfter("{\x92" + std::string(1, static_cast<char>(index)) + "}"),
              "{" + name + "}")
        << index;
  }
}

TEST(SystemOperators, AnswerHowTheyWent) {
  const struct {
    const char* program;
    const char* name;
    int expected;
  } kTable[] = {
      {"showpage", "showpage", 3}, {"5", "image", 0}, {"(x)", "colorimage", 2},
      {"1 2 [1]", "transform", 2}, {"", "fill", 1},
  };
  for (const auto& [program, name, expected] : kTable) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    const orxeps::ResultCode result = DispatchOperator(interpretation.Get(), name);
    EXPECT_EQ(static_cast<int>(result), expected) << program << ' ' << name;
  }
}

}  // namespace
}  // namespace orxtests
