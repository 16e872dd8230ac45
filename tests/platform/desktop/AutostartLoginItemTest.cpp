#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>

#include "platform/desktop/AutostartLoginItem.h"
#include "platform/desktop/ConfigHome.h"

namespace tavin::desktop {
namespace {

constexpr auto fileName = "autostart/app.tavin.Tavin.desktop";

class AutostartLoginItemTest : public testing::Test {
 protected:
  LoginItemStatus statusWith(const QByteArray& line) {
    home_.write(fileName, "[Desktop Entry]\nType=Application\n" + line + "\n");
    return item_.status();
  }

  ConfigHome home_;
  ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"};
  AutostartLoginItem item_{QStringLiteral("/opt/my apps/tavin")};
};

TEST_F(AutostartLoginItemTest, IsOnAfterRegisteringAndOffAfterUnregistering) {
  EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(item_.registerItem(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::enabled);
  EXPECT_EQ(item_.unregisterItem(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
  EXPECT_FALSE(QFile::exists(home_.path(fileName)));
  EXPECT_EQ(item_.unregisterItem(), std::nullopt);
}

TEST_F(AutostartLoginItemTest, NamesTheProgramByItsPath) {
  item_.registerItem();
  const QByteArray file = home_.read(fileName);
  EXPECT_TRUE(file.startsWith("[Desktop Entry]\nType=Application\nName=Tavin\n"));
  EXPECT_TRUE(file.contains("\nExec=\"/opt/my apps/tavin\"\n"));
  EXPECT_TRUE(file.contains("\nTryExec=/opt/my apps/tavin\n"));
  EXPECT_FALSE(file.contains("DBusActivatable"));
}

TEST_F(AutostartLoginItemTest, KnowsWhatSwitchesItOff) {
  item_.registerItem();
  EXPECT_EQ(statusWith("Name=Tavin"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith("Hidden=false"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith("X-GNOME-Autostart-enabled=true"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith("OnlyShowIn=XFCE;GNOME;"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith("NotShowIn=KDE;"), LoginItemStatus::enabled);
  for (const char* line : {"Hidden=true", "Hidden = True", "X-GNOME-Autostart-enabled=false",
                           "X-MATE-Autostart-enabled=false", "OnlyShowIn=KDE;",
                           "OnlyShowIn=", "NotShowIn=XFCE;GNOME;"})
    EXPECT_EQ(statusWith(line), LoginItemStatus::requiresApproval) << line;
}

TEST_F(AutostartLoginItemTest, PipeInItsPlaceHoldsNobodyUpAndIsReplaced) {
  item_.registerItem();
  QFile::remove(home_.path(fileName));
  ASSERT_EQ(::mkfifo(QFile::encodeName(home_.path(fileName)).constData(), 0600), 0);
  EXPECT_EQ(item_.status(), LoginItemStatus::requiresApproval);
  EXPECT_EQ(item_.unregisterItem(), std::nullopt);
  EXPECT_EQ(item_.registerItem(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartLoginItemTest, RegisteringSwitchesItOnAgain) {
  item_.registerItem();
  ASSERT_EQ(statusWith("Hidden=true"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(item_.registerItem(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartLoginItemTest, SaysWhatWentWrong) {
  home_.write("autostart", "a file where the folder should be");
  const auto error = item_.registerItem();
  ASSERT_NE(error, std::nullopt);
  EXPECT_TRUE(error->contains(home_.path("autostart")));
  EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
}

TEST_F(AutostartLoginItemTest, SaysWhyItCannotBeRemoved) {
  QDir().mkpath(home_.path(fileName));  // A folder where the file should be.
  const auto error = item_.unregisterItem();
  ASSERT_NE(error, std::nullopt);
  EXPECT_TRUE(error->contains(home_.path(fileName)));
  EXPECT_NE(item_.registerItem(), std::nullopt);
}

}  // namespace
}  // namespace tavin::desktop
