// The transformation matrix and matrices as operands.
#include <gtest/gtest.h>

#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

TEST(Matrix, OperationsActInUserSpaceFirst) {
  ExpectOutcomes({
      {"matrix", "[1.0 0.0 0.0 1.0 0.0 0.0]"},
      {"10 20 translate 2 3 scale matrix currentmatrix", "[2.0 0.0 0.0 3.0 10.0 20.0]"},
      {"2 3 scale 10 20 translate matrix currentmatrix", "[2.0 0.0 0.0 3.0 20.0 60.0]"},
      {"[1 2 3 4 5 6] concat matrix currentmatrix", "[1.0 2.0 3.0 4.0 5.0 6.0]"},
      {"2 3 scale [1 2 3 4 5 6] concat matrix currentmatrix", "[2.0 6.0 6.0 12.0 10.0 18.0]"},
      {"[2.0 0.0 0.0 3.0 5.0 5.0] setmatrix 3 4 translate matrix currentmatrix",
       "[2.0 0.0 0.0 3.0 11.0 17.0]"},
      {"[1 (x) 0 1.5 /a 2] concat matrix currentmatrix", "[1.0 0.0 0.0 1.5 0.0 2.0]"},
      {"(x) 2 scale matrix currentmatrix", "[0.0 0.0 0.0 2.0 0.0 0.0]"},
      {"(x) rotate matrix currentmatrix", "[1.0 0.0 0.0 1.0 0.0 0.0]"},
  });
}

TEST(Matrix, ArraysAreReadAndWrittenByTheirRealValues) {
  ExpectOutcomes({
      {"[2.0 0.0 0.0 2.0 5.0 5.0] setmatrix matrix currentmatrix", "[2.0 0.0 0.0 2.0 5.0 5.0]"},
      {"[2 0 0 2 5 5] setmatrix matrix currentmatrix", "[0.0 0.0 0.0 0.0 0.0 0.0]"},
      {"[9 8 7 6 5 4] currentmatrix", "[9 8 7 6 5 4]"},
      {"3 3 scale [9 8 7 6 5 4] currentmatrix setmatrix matrix currentmatrix",
       "[3.0 0.0 0.0 3.0 0.0 0.0]"},
      {"[2.7 round 0.0 0.0 1.0 0.0 0.0] setmatrix matrix currentmatrix",
       "[3.0 0.0 0.0 1.0 0.0 0.0]"},
      {"2 3 matrix scale matrix currentmatrix", "[2 0.0 0.0 3 0.0 0.0] [1.0 0.0 0.0 1.0 0.0 0.0]"},
      {"1 1 2 3 matrix scale transform", "0.0 0.0"},
      {"1 1 2.0 3.0 matrix scale transform", "2.0 3.0"},
  });
}

TEST(Matrix, TransformMapsThroughTheCurrentOrAGivenMatrix) {
  ExpectOutcomes({
      {"3 4 transform", "3.0 4.0"},
      {"[2 0 0 3 10 20] concat 1 1 transform", "12.0 23.0"},
      {"2 2 scale 4 6 itransform 4 6 [4.0 0.0 0.0 2.0 0.0 0.0] itransform", "2.0 3.0 1.0 3.0"},
      {"5 5 scale 1 2 [1.0 2.0 3.0 4.0 5.0 6.0] transform", "12.0 16.0"},
      {"12 16 [1.0 2.0 3.0 4.0 5.0 6.0] itransform", "1.0 2.0"},
      // Through the current matrix in double precision, through an operand in single.
      {"[16777216.0 0.0 1.0 0.0 -16777216.0 0.0] setmatrix 1 1 transform", "1.0 0.0"},
      {"1 1 [16777216.0 0.0 1.0 0.0 -16777216.0 0.0] transform", "0.0 0.0"},
      // Without an inverse, through the matrix itself.
      {"[1 2 2 4 0 0] concat 4 6 itransform", "16.0 32.0"},
      {"4 6 [1.0 2.0 2.0 4.0 0.0 1.0] itransform", "16.0 33.0"},
      {"(x) 4 transform", "0.0 4.0"},
  });
}

TEST(Matrix, RotationTurnsCounterClockwise) {
  const struct {
    const char* program;
    float x;
    float y;
  } kTable[] = {
      {"90 rotate 1 0 transform", 0, 1},
      {"90 rotate 0 1 itransform", 1, 0},
      {"30 rotate 2 0 transform", 1.7320508F, 1},
      {"45 rotate -45 rotate 3 4 transform", 3, 4},
      {"10 0 translate 90 rotate 5 5 translate 0 0 transform", 5, 5},
      // The angle is made radians in single precision: here 17453.29296875.
      {"1000000 rotate 1 0 transform", 0.17409015F, -0.98472972F},
  };
  for (const auto& [program, x, y] : kTable) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    EXPECT_NEAR(interpretation.Get().operandStack.Below(1)->realValue, x, 1e-6F) << program;
    EXPECT_NEAR(interpretation.Get().operandStack.Below(0)->realValue, y, 1e-6F) << program;
  }
}

TEST(Matrix, WhatIsNoMatrixStaysOrFails) {
  ExpectOutcomes({
      {"5 concat", "5 !Operand error : needed array"},
      {"[1 2 3 4 5] concat", "!Operand error : Array size needs to be 6."},
      {"[1 2 3 4 5 6 7] concat", "!Operand error : Array size needs to be 6."},
      {"5 setmatrix (x) currentmatrix", "5 (x)"},
      {"[1 2 3] setmatrix [4] currentmatrix", "[1 2 3] [4]"},
      {"1 matrix scale", "1 [1.0 0.0 0.0 1.0 0.0 0.0] !stackunderflow"},
      {"1 2 [3] scale", "1 2 [3]"},
      {"1 [2] transform", "1 [2] !stackunderflow"},
      {"1 2 3 [1 2 3] transform 4 5 [6] itransform", "1 2 3 [1 2 3] 4 5 [6]"},
      // These forms with a matrix are not known: it counts as 0.
      {"45 matrix rotate matrix currentmatrix", "45 [1.0 0.0 0.0 1.0 0.0 0.0]"},
      {"1 2 matrix translate matrix currentmatrix", "1 [1.0 0.0 0.0 1.0 2.0 0.0]"},
  });
}

}  // namespace
}  // namespace orxtests
