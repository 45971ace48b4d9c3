#pragma once

#include <array>

namespace velk {

/// A point in homogeneous coordinates, a row that matrices multiply from the right.
struct Point4 {
  double x = 0, y = 0, z = 0, w = 1;
};

/// A transformation of such points.
class Matrix4 {
 public:
  using Rows = std::array<std::array<double, 4>, 4>;

  explicit Matrix4(const Rows& rows) : rows_(rows) {}

  /// Makes the point (dx, dy, dz) the origin.
  static Matrix4 Translate(double dx, double dy, double dz);
  /// The third axis up instead of the second.
  static Matrix4 SwapAxes();
  static Matrix4 RotateX(double angle);
  static Matrix4 RotateY(double angle);
  static Matrix4 MirrorZ();
  static Matrix4 ScaleXY(double sx, double sy);

  double At(int row, int column) const {
    return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
  }
  Point4 operator()(const Point4& point) const;

 private:
  Rows rows_;
};

/// First `a`, then `b`.
Matrix4 operator*(const Matrix4& a, const Matrix4& b);

}  // namespace velk
