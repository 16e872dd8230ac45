#include "platform/tray/TrayImage.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>

#include "platform/Installation.h"
#include "platform/tray/Canvas.h"

namespace tavin::tray {

namespace {

// The drawing of packaging/icons/hicolor/symbolic/apps, fitted to whole pixels at each size. Panels
// that show pixels tell nobody what lies behind them, and it changes; so what is drawn is white
// with a black rim. One of the two has a contrast of 4.58 or more to any colour: both contrasts
// multiplied are 21, whatever the colour is.
constexpr int idleHeights[] = {4, 8, 14, 8, 4};  // Sixteenths, as all below.
constexpr int activeHeights[] = {3, 5, 9, 5, 3};
constexpr int bars = 5;

// The usual 16, 22, 24 and 32, and each of them at 125, 150 and 200 %: panels blur what they have
// to stretch.
constexpr int pixmapSizes[] = {16, 20, 22, 24, 28, 30, 32, 33, 36, 40, 44, 48, 64};

struct Fit {
  int size;  // Of the drawing, which is smaller than the picture where that centres the bars.
  int rim;
  int width;  // Of a bar.
  int gap;
};

int sixteenths(int size, double count) { return qRound(size * count / 16); }

int rimOf(int size) { return sixteenths(size, 1.125); }

int widthOf(const Fit& fit) { return bars * fit.width + (bars - 1) * fit.gap; }

// An even drawing has no middle pixel for an odd row of bars.
Fit centred(Fit fit) {
  fit.size -= (fit.size - widthOf(fit)) % 2;
  return fit;
}

// As wide as the picture lets it be.
Fit idleFit(int size) {
  const int rim = rimOf(size);
  Fit best{};
  for (const int gap : {size / 16, size / 16 + 1}) {
    const Fit fit{size, rim, (size - 2 * rim - (bars - 1) * gap) / bars, gap};
    if (widthOf(fit) > widthOf(best))
      best = fit;
  }
  return centred(best);
}

// Inside a disc.
Fit activeFit(int size) {
  const int width = sixteenths(size, 0.9);
  return centred({size, rimOf(size), width, width});
}

void drawBars(Canvas& canvas, const Fit& fit, const int (&heights)[bars], int margin, Shade shade) {
  for (int i = 0; i < bars; ++i) {
    const int left = (fit.size - widthOf(fit)) / 2 + i * (fit.width + fit.gap);
    int height = std::min(sixteenths(fit.size, heights[i]), fit.size - 2 * fit.rim);
    height -= (fit.size - height) % 2;
    const double radius = fit.width / 2.0 + margin;
    canvas.drawRounded(QRect(left, (fit.size - height) / 2, fit.width, height)
                           .adjusted(-margin, -margin, margin, margin),
                       radius, shade);
  }
}

void drawIdle(Canvas& canvas, int size) {
  const Fit fit = idleFit(size);
  drawBars(canvas, fit, idleHeights, fit.rim, Shade::black);
  drawBars(canvas, fit, idleHeights, 0, Shade::white);
}

void drawActive(Canvas& canvas, int size) {
  const Fit fit = activeFit(size);
  const QRect disc(0, 0, fit.size, fit.size);
  const int rim = fit.rim;
  canvas.drawRounded(disc, fit.size / 2.0, Shade::black);
  canvas.drawRounded(disc.adjusted(rim, rim, -rim, -rim), fit.size / 2.0 - rim, Shade::white);
  drawBars(canvas, fit, activeHeights, 0, Shade::black);
}

IconPixmap render(bool active, int size) {
  Canvas canvas(size);
  (active ? drawActive : drawIdle)(canvas, size);
  return canvas.picture();
}

}  // namespace

TrayImage trayImage(const QString& symbolName) {
  TrayImage image;
  const bool active = symbolName == QLatin1String("waveform.circle.fill");
  if (!active && symbolName != QLatin1String("waveform"))
    return image;
  image.iconName = active ? QStringLiteral("app.tavin.Tavin-active-symbolic")
                          : QStringLiteral("app.tavin.Tavin-idle-symbolic");
  // The look stays while a reading is paused.
  image.state = active ? QCoreApplication::translate("StatusItem", "Reading or paused")
                       : QCoreApplication::translate("StatusItem", "Not reading");
  for (const int size : pixmapSizes) image.pixmaps.append(render(active, size));
  return image;
}

QString iconThemePath() {
  QDir directory(QCoreApplication::applicationDirPath());
  return directory.cd(QLatin1String(dataFromProgram)) && directory.cd(QStringLiteral("icons"))
             ? directory.absolutePath()
             : QString();
}

}  // namespace tavin::tray
