#include "platform/tray/TrayImage.h"

#include <QCoreApplication>
#include <QDir>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include "platform/Installation.h"

namespace tavin::tray {

namespace {

// The same drawing as packaging/icons/hicolor/symbolic/apps, on a 16 by 16 grid.
struct Bar {
  double centre;
  double halfHeight;
};
constexpr Bar idleBars[] = {{2, 1.75}, {5, 4.25}, {8, 7}, {11, 4}, {14, 1.75}};
constexpr double idleWidth = 1.5;
constexpr Bar activeBars[] = {{4, 1.25}, {6, 2.75}, {8, 4.5}, {10, 2.5}, {12, 1.25}};
constexpr double activeWidth = 1;

template <std::size_t n>
void addBars(QPainterPath& path, const Bar (&bars)[n], double width) {
  for (const Bar& bar : bars)
    path.addRoundedRect(bar.centre - width / 2, 8 - bar.halfHeight, width, 2 * bar.halfHeight,
                        width / 2, width / 2);
}

QPainterPath drawing(bool active) {
  QPainterPath path;  // Odd-even filling cuts the bars out of the disc.
  if (active)
    path.addEllipse(QPointF(8, 8), 7.5, 7.5);
  if (active)
    addBars(path, activeBars, activeWidth);
  else
    addBars(path, idleBars, idleWidth);
  return path;
}

QImage render(const QPainterPath& path, int size) {
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 16.0, size / 16.0);
  painter.fillPath(path, QColor(0x8a, 0x8a, 0x8a));
  return image;
}

}  // namespace

TrayImage trayImage(const QString& symbolName) {
  TrayImage image;
  const bool active = symbolName == QLatin1String("waveform.circle.fill");
  if (!active && symbolName != QLatin1String("waveform"))
    return image;
  image.iconName = active ? QStringLiteral("app.tavin.Tavin-active-symbolic")
                          : QStringLiteral("app.tavin.Tavin-idle-symbolic");
  const QPainterPath path = drawing(active);
  for (const int size : {16, 22, 24, 32, 48}) image.pixmaps.push_back(render(path, size));
  return image;
}

// The same drawing as packaging/icons/hicolor/scalable/apps, on a 128 by 128 grid.
QImage programImage(int size) {
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

QString iconThemePath() {
  QDir directory(QCoreApplication::applicationDirPath());
  return directory.cd(QLatin1String(dataFromProgram)) && directory.cd(QStringLiteral("icons"))
             ? directory.absolutePath()
             : QString();
}

}  // namespace tavin::tray
