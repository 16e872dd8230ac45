#include <gtest/gtest.h>

#include "platform/desktop/AccessibilitySettings.h"
#include "platform/desktop/ConfigHome.h"

namespace tavin::desktop {
namespace {

class AccessibilitySettingsTest : public testing::Test {
 protected:
  QString install(const char* program) {
    QFile file(folder_.filePath(QLatin1String(program)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return file.fileName();
  }

  static std::optional<QStringList> commandOn(const char* desktop) {
    const ScopedVariable variable("XDG_CURRENT_DESKTOP", desktop);
    return accessibilitySettingsCommand();
  }

  QTemporaryDir folder_;
  ScopedVariable path_{"PATH", folder_.path().toLocal8Bit()};
};

TEST_F(AccessibilitySettingsTest, KnowsEachDesktop) {
  const QString gnome = install("gnome-control-center");
  const QString kde = install("systemsettings5");
  const QString xfce = install("xfce4-accessibility-settings");
  const QString cinnamon = install("cinnamon-settings");
  const QString mate = install("mate-at-properties");
  const QString page = QStringLiteral("universal-access");
  EXPECT_EQ(commandOn("GNOME"), QStringList({gnome, page}));
  EXPECT_EQ(commandOn("ubuntu:GNOME"), QStringList({gnome, page}));
  EXPECT_EQ(commandOn("KDE"), QStringList({kde, QStringLiteral("kcm_access")}));
  EXPECT_EQ(commandOn("XFCE"), QStringList(xfce));
  EXPECT_EQ(commandOn("X-Cinnamon"), QStringList({cinnamon, page}));
  EXPECT_EQ(commandOn("MATE"), QStringList(mate));
}

TEST_F(AccessibilitySettingsTest, TakesTheNewestProgramOfADesktop) {
  install("systemsettings5");
  const QString newest = install("systemsettings");
  EXPECT_EQ(commandOn("KDE"), QStringList({newest, QStringLiteral("kcm_access")}));
}

TEST_F(AccessibilitySettingsTest, HasNoneWithoutTheProgramOrTheDesktop) {
  EXPECT_EQ(commandOn("GNOME"), std::nullopt);
  install("gnome-control-center");
  EXPECT_EQ(commandOn("LXQt"), std::nullopt);
  EXPECT_EQ(commandOn(""), std::nullopt);
}

}  // namespace
}  // namespace tavin::desktop
