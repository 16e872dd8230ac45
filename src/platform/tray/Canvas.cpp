#include "platform/tray/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tavin::tray {

namespace {

// How far a point lies outside of the shape; negative within it.
double distance(const QRectF& box, double radius, double x, double y) {
  const double across = std::abs(x - box.center().x()) - box.width() / 2 + radius;
  const double down = std::abs(y - box.center().y()) - box.height() / 2 + radius;
  return std::hypot(std::max(across, 0.0), std::max(down, 0.0)) +
         std::min(std::max(across, down), 0.0) - radius;
}

char byteOf(double part) { return static_cast<char>(std::lround(part * 255)); }

}  // namespace

Canvas::Canvas(int size) : size_(size), points_(qsizetype{size} * size) {}

void Canvas::drawRounded(const QRect& box, double radius, Shade shade) {
  const double light = shade == Shade::white ? 1 : 0;
  for (int y = box.top(); y <= box.bottom(); ++y)
    for (int x = box.left(); x <= box.right(); ++x) {
      const double covered =
          std::clamp(0.5 - distance(QRectF(box), radius, x + 0.5, y + 0.5), 0.0, 1.0);
      Point& point = points_[y * size_ + x];
      point.light = point.light * (1 - covered) + light * covered;
      point.covered = point.covered * (1 - covered) + covered;
    }
}

IconPixmap Canvas::picture() const {
  IconPixmap picture{size_, size_, {}};
  picture.pixels.reserve(4 * static_cast<qsizetype>(points_.size()));
  for (const Point& point : points_) {
    const char grey = byteOf(point.covered > 0 ? point.light / point.covered : 0);
    for (const char part : {byteOf(point.covered), grey, grey, grey}) picture.pixels.append(part);
  }
  return picture;
}

}  // namespace tavin::tray
