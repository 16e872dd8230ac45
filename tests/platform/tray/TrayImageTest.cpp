#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>
#include <set>
#include <vector>

#include "platform/tray/TrayImage.h"
#include "platform/widgets/Contrast.h"
#include "platform/widgets/XEmbedIcon.h"

namespace tavin::tray {
namespace {

const QString idle = QStringLiteral("waveform");
const QString active = QStringLiteral("waveform.circle.fill");

using widgets::contrast;

std::vector<QImage> pictures(const QString& symbol) {
  std::vector<QImage> all;
  for (const IconPixmap& pixmap : trayImage(symbol).pixmaps)
    all.push_back(widgets::pictureOf(pixmap));
  return all;
}

QImage onPanel(const QImage& icon, const QColor& panel) {
  QImage picture(icon.size(), QImage::Format_RGB32);
  picture.fill(panel);
  QPainter(&picture).drawImage(0, 0, icon);
  return picture;
}

// How much of the picture has at least this contrast.
double partThatIsSeen(const QImage& picture, const QColor& panel, double least) {
  int seen = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      seen += contrast(picture.pixelColor(x, y), panel) >= least;
  return double(seen) / (picture.width() * picture.height());
}

int widestDrawn(const QImage& icon) {
  int left = icon.width();
  int right = 0;
  for (int y = 0; y < icon.height(); ++y)
    for (int x = 0; x < icon.width(); ++x)
      if (icon.pixelColor(x, y).alpha() > 0) {
        left = std::min(left, x);
        right = std::max(right, x + 1);
      }
  return right - left;
}

TEST(TrayImageTest, IsSeenOnAPanelOfAnyColour) {
  std::vector<QColor> panels{Qt::red, Qt::green, Qt::blue, Qt::yellow, Qt::magenta, Qt::cyan};
  for (int value = 0; value <= 255; value += 3) panels.emplace_back(value, value, value);
  for (const QString& symbol : {idle, active})
    for (const QImage& icon : pictures(symbol))
      for (const QColor& panel : panels)
        ASSERT_GT(partThatIsSeen(onPanel(icon, panel), panel, 4.5), 0.05)
            << qPrintable(symbol) << ' ' << icon.width() << ' ' << qPrintable(panel.name());
}

TEST(TrayImageTest, HasEachUsualSizeAtEachScale) {
  std::set<int> sizes;
  for (const QImage& icon : pictures(idle)) {
    EXPECT_EQ(icon.width(), icon.height());
    sizes.insert(icon.width());
  }
  for (const int size : {16, 22, 24, 32})
    for (const double scale : {1.0, 1.25, 1.5, 2.0})
      EXPECT_TRUE(sizes.contains(int(std::ceil(size * scale)))) << size << " times " << scale;
}

TEST(TrayImageTest, FillsItsPictureAtEachSize) {
  for (const QString& symbol : {idle, active})
    for (const QImage& icon : pictures(symbol))
      EXPECT_GE(widestDrawn(icon), 0.8 * icon.width()) << qPrintable(symbol) << icon.width();
}

// A bar's sides lie between two pixels.
TEST(TrayImageTest, IsCrispAtEachSize) {
  for (const QString& symbol : {idle, active})
    for (const QImage& icon : pictures(symbol)) {
      const int middle = (icon.height() - 1) / 2;
      for (int x = icon.width() / 4; x < icon.width() * 3 / 4; ++x) {
        const QColor pixel = icon.pixelColor(x, middle);
        EXPECT_TRUE(pixel == QColor(Qt::white) || pixel == QColor(Qt::black))
            << qPrintable(symbol) << icon.width() << " at " << x << qPrintable(pixel.name());
      }
    }
}

TEST(TrayImageTest, HasTwoLooksAndNoOther) {
  EXPECT_NE(trayImage(idle).pixmaps, trayImage(active).pixmaps);
  EXPECT_NE(trayImage(idle).iconName, trayImage(active).iconName);
  EXPECT_TRUE(trayImage("no such symbol").pixmaps.isEmpty());
}

}  // namespace
}  // namespace tavin::tray
