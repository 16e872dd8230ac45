#include "platform/widgets/ProgramImage.h"

#include <QLinearGradient>
#include <QPainter>

namespace tavin::widgets {

// The same drawing as packaging/icons/hicolor/scalable/apps, on a 128 by 128 grid.
QImage programImage(int size) {
  struct Bar {
    double centre;
    double halfHeight;
  };
  constexpr Bar bars[] = {{28, 7}, {46, 18}, {64, 30}, {82, 17}, {100, 7}};
  constexpr double barWidth = 9;
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 128.0, size / 128.0);
  painter.setPen(Qt::NoPen);
  QLinearGradient ground(0, 8, 0, 120);
  ground.setColorAt(0, QColor(0x3f, 0x8f, 0xd6));
  ground.setColorAt(1, QColor(0x1f, 0x4f, 0x9c));
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(8, 8, 112, 112), 26, 26);
  painter.setBrush(Qt::white);
  for (const Bar& bar : bars)
    painter.drawRoundedRect(
        QRectF(bar.centre - barWidth / 2, 64 - bar.halfHeight, barWidth, 2 * bar.halfHeight),
        barWidth / 2, barWidth / 2);
  return image;
}

}  // namespace tavin::widgets
