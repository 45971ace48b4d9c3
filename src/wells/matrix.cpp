#include "wells/matrix.h"

#include <cmath>

namespace velk {

Point4 Matrix4::operator()(const Point4& point) const {
  const auto column = [&](std::size_t i) {
    return point.x * rows_[0][i] + point.y * rows_[1][i] + point.z * rows_[2][i] + point.w * rows_[3][i];
  };
  return {column(0), column(1), column(2), column(3)};
}

Matrix4 operator*(const Matrix4& a, const Matrix4& b) {
  Matrix4::Rows rows{};
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      for (int i = 0; i < 4; ++i)
        rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] += a.At(row, i) * b.At(i, column);
  return Matrix4(rows);
}

Matrix4 Matrix4::Translate(double dx, double dy, double dz) {
  return Matrix4({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {-dx, -dy, -dz, 1}}});
}

Matrix4 Matrix4::SwapAxes() {
  return Matrix4({{{1, 0, 0, 0}, {0, 0, -1, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}});
}

Matrix4 Matrix4::RotateX(double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return Matrix4({{{1, 0, 0, 0}, {0, c, -s, 0}, {0, s, c, 0}, {0, 0, 0, 1}}});
}

Matrix4 Matrix4::RotateY(double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return Matrix4({{{c, 0, -s, 0}, {0, 1, 0, 0}, {s, 0, c, 0}, {0, 0, 0, 1}}});
}

Matrix4 Matrix4::MirrorZ() {
  return Matrix4({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, -1, 0}, {0, 0, 0, 1}}});
}

Matrix4 Matrix4::ScaleXY(double sx, double sy) {
  return Matrix4({{{sx, 0, 0, 0}, {0, sy, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});
}

}  // namespace velk
