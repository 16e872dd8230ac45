#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>
#include <QLockFile>
#include <utility>

#include "platform/desktop/ConfigHome.h"
#include "platform/desktop/SettingsUserDefaults.h"

namespace tavin::desktop {
namespace {

constexpr auto fileName = "tavin/tavin.conf";
const QString key = QStringLiteral("shortcut");

// Qt looks for the folder once in a process, so all tests share one; each begins without a file.
class SettingsUserDefaultsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { sharedHome = new ConfigHome; }
  static void TearDownTestSuite() { delete std::exchange(sharedHome, nullptr); }
  void SetUp() override {
    QDir().mkpath(home.path("tavin"));
    QFile::remove(home.path(fileName));
  }

  static inline ConfigHome* sharedHome = nullptr;
  ConfigHome& home = *sharedHome;
};

TEST_F(SettingsUserDefaultsTest, HasNothingAtFirst) {
  EXPECT_EQ(SettingsUserDefaults().string(key), std::nullopt);
}

TEST_F(SettingsUserDefaultsTest, StoresInTheGeneralGroupAtOnce) {
  SettingsUserDefaults defaults;
  defaults.setString(key, QStringLiteral("ctrl-esc"));
  EXPECT_EQ(defaults.string(key), QStringLiteral("ctrl-esc"));
  EXPECT_EQ(home.read(fileName), "[General]\nshortcut=ctrl-esc\n");
}

TEST_F(SettingsUserDefaultsTest, SeesWhatAnotherProcessWrote) {
  SettingsUserDefaults defaults;
  defaults.setString(key, QStringLiteral("opt-esc"));
  home.write(fileName, "[General]\nshortcut=ctrl-opt-r\n");
  EXPECT_EQ(defaults.string(key), QStringLiteral("ctrl-opt-r"));
  home.write(fileName, "");
  EXPECT_EQ(defaults.string(key), std::nullopt);
}

TEST_F(SettingsUserDefaultsTest, KeepsWhatAnotherProcessWroteBesideItsOwn) {
  SettingsUserDefaults defaults;
  defaults.setString(key, QStringLiteral("opt-esc"));
  home.write(fileName, "[General]\nother=kept\nshortcut=opt-esc\n");
  defaults.setString(key, QStringLiteral("ctrl-esc"));
  EXPECT_EQ(home.read(fileName), "[General]\nother=kept\nshortcut=ctrl-esc\n");
}

TEST_F(SettingsUserDefaultsTest, OnlyATextIsAValue) {
  home.write(fileName, "[General]\nshortcut=one, two\n");
  EXPECT_EQ(SettingsUserDefaults().string(key), std::nullopt);
  home.write(fileName, "\xff\xfe no such thing [[[");
  EXPECT_EQ(SettingsUserDefaults().string(key), std::nullopt);
}

TEST_F(SettingsUserDefaultsTest, ALockThatAnotherHoldsKeepsNobodyWaiting) {
  QLockFile held(home.path(fileName) + QStringLiteral(".lock"));
  ASSERT_TRUE(held.lock());
  QElapsedTimer time;
  time.start();
  SettingsUserDefaults defaults;
  defaults.setString(key, QStringLiteral("ctrl-esc"));
  EXPECT_EQ(defaults.string(key), QStringLiteral("ctrl-esc"));
  EXPECT_LT(time.elapsed(), 2000);
  EXPECT_EQ(home.read(fileName), "[General]\nshortcut=ctrl-esc\n");
}

TEST_F(SettingsUserDefaultsTest, AFileThatIsALinkStaysOne) {
  home.write("elsewhere.conf", "[General]\nother=kept\n");
  ASSERT_TRUE(QFile::link(home.path("elsewhere.conf"), home.path(fileName)));
  SettingsUserDefaults().setString(key, QStringLiteral("ctrl-esc"));
  EXPECT_TRUE(QFileInfo(home.path(fileName)).isSymLink());
  EXPECT_EQ(home.read("elsewhere.conf"), "[General]\nother=kept\nshortcut=ctrl-esc\n");
}

TEST_F(SettingsUserDefaultsTest, APipeInItsPlaceHoldsNothingAndIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(home.path(fileName).toLocal8Bit().constData(), 0600), 0);
  SettingsUserDefaults defaults;
  EXPECT_EQ(defaults.string(key), std::nullopt);
  defaults.setString(key, QStringLiteral("ctrl-esc"));
  EXPECT_EQ(defaults.string(key), QStringLiteral("ctrl-esc")) << "until the program ends";
}

}  // namespace
}  // namespace tavin::desktop
