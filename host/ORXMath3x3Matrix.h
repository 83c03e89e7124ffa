// The mathematics library's 3x3 matrix of doubles, its 3-vector and pi.
//
// Points are row vectors multiplied from the left, so a product applies its left operand first.
// All arithmetic is in double precision, each sum formed from left to right.
#pragma once

inline constexpr double ORXPI = 3.14159265358979323846;

struct ORXMathVector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

class ORXMath3x3Matrix {
public:
  // The identity.
  constexpr ORXMath3x3Matrix() noexcept : ORXMath3x3Matrix(1, 0, 0, 0, 1, 0, 0, 0, 1) {}
  // Row by row.
  constexpr ORXMath3x3Matrix(double m11, double m12, double m13, double m21, double m22, double m23,
                             double m31, double m32, double m33) noexcept
      : m{{m11, m12, m13}, {m21, m22, m23}, {m31, m32, m33}} {}

  [[nodiscard]] constexpr ORXMathVector GetFirstColumn() const noexcept { return Column(0); }
  [[nodiscard]] constexpr ORXMathVector GetSecondColumn() const noexcept { return Column(1); }
  [[nodiscard]] constexpr ORXMathVector GetThirdColumn() const noexcept { return Column(2); }
  constexpr void SetFirstColumn(const ORXMathVector& v) noexcept { SetColumn(0, v); }
  constexpr void SetSecondColumn(const ORXMathVector& v) noexcept { SetColumn(1, v); }
  constexpr void SetThirdColumn(const ORXMathVector& v) noexcept { SetColumn(2, v); }

  [[nodiscard]] constexpr double Determinant() const noexcept {
    return m[0][0] * Cofactor(0, 0) + m[0][1] * Cofactor(0, 1) + m[0][2] * Cofactor(0, 2);
  }
  // Writes the inverse and returns 1. A matrix whose determinant is 0 has none: returns 0 and
  // leaves `inverse` as it was. `inverse` may be this matrix.
  constexpr unsigned char Inverse(ORXMath3x3Matrix& inverse) const noexcept {
    if (Determinant() == 0.0) return 0;
    inverse = Inverse();
    return 1;
  }
  // REQUIRES: Determinant() is not 0; the elements are not finite otherwise.
  [[nodiscard]] constexpr ORXMath3x3Matrix Inverse() const noexcept {
    const double d = Determinant();
    return {Cofactor(0, 0) / d, Cofactor(1, 0) / d, Cofactor(2, 0) / d,
            Cofactor(0, 1) / d, Cofactor(1, 1) / d, Cofactor(2, 1) / d,
            Cofactor(0, 2) / d, Cofactor(1, 2) / d, Cofactor(2, 2) / d};
  }

  friend constexpr ORXMath3x3Matrix operator*(const ORXMath3x3Matrix& a,
                                              const ORXMath3x3Matrix& b) noexcept {
    ORXMath3x3Matrix product;
    for (int row = 0; row < 3; ++row) {
      for (int column = 0; column < 3; ++column) {
        product.m[row][column] = a.m[row][0] * b.m[0][column] + a.m[row][1] * b.m[1][column] +
                                 a.m[row][2] * b.m[2][column];
      }
    }
    return product;
  }

private:
  [[nodiscard]] constexpr double Cofactor(int row, int column) const noexcept {
    // Taking the next two rows and columns cyclically gives the sign as well.
    const int r1 = (row + 1) % 3;
    const int r2 = (row + 2) % 3;
    const int c1 = (column + 1) % 3;
    const int c2 = (column + 2) % 3;
    return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
  }
  [[nodiscard]] constexpr ORXMathVector Column(int c) const noexcept {
    return {m[0][c], m[1][c], m[2][c]};
  }
  constexpr void SetColumn(int c, const ORXMathVector& v) noexcept {
    m[0][c] = v.x;
    m[1][c] = v.y;
    m[2][c] = v.z;
  }

  double m[3][3];
};
