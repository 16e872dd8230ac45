#pragma once

#include <QList>
#include <QRect>

#include "platform/tray/TrayImage.h"

namespace tavin::tray {

enum class Shade { black, white };

// A square picture in black and white on nothing, drawn with soft edges: enough for an icon,
// without a library for pictures.
class Canvas {
 public:
  explicit Canvas(int size);

  // Draws a rectangle with round corners over what is there; it must lie within the picture.
  void drawRounded(const QRect& box, double radius, Shade shade);
  IconPixmap picture() const;

 private:
  struct Point {
    double light = 0;  // Of white, times what is covered.
    double covered = 0;
  };

  int size_;
  QList<Point> points_;
};

}  // namespace tavin::tray
