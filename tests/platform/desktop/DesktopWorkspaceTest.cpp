#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QUrl>
#include <atomic>
#include <chrono>
#include <thread>

#include "platform/ActivationToken.h"
#include "platform/Eventually.h"
#include "platform/desktop/ConfigHome.h"
#include "platform/desktop/DesktopWorkspace.h"

namespace tavin::desktop {
namespace {

// Programs of the desktop that write down what they were called with.
class DesktopWorkspaceTest : public testing::Test {
 protected:
  void install(const char* program) {
    QFile file(folder_.filePath(QLatin1String(program)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "#!/bin/sh\nPATH=/usr/bin:/bin\n"
        "printf '%s' \"$*${XDG_ACTIVATION_TOKEN+ token $XDG_ACTIVATION_TOKEN}\" > '" +
        calls_.toLocal8Bit() + ".new'\nmv '" + calls_.toLocal8Bit() + ".new' '" +
        calls_.toLocal8Bit() + "'\nexec sleep 5\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  QByteArray called() {
    EXPECT_TRUE(eventually([this] { return QFile::exists(calls_); }));
    QFile file(calls_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  int argumentCount_ = 1;
  char name_[6] = "tavin";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{argumentCount_, arguments_};
  QTemporaryDir folder_;
  QString calls_ = folder_.filePath(QStringLiteral("calls"));
  ScopedVariable path_{"PATH", folder_.path().toLocal8Bit()};
  std::atomic<int> bells_ = 0;
  std::atomic<bool> rangOnMainThread_ = false;
  const std::thread::id main_ = std::this_thread::get_id();
  DesktopWorkspace workspace_{[this] {
    rangOnMainThread_ = std::this_thread::get_id() == main_;
    ++bells_;
  }};
};

TEST_F(DesktopWorkspaceTest, OpensAFileAndWaitsForNobody) {
  install("xdg-open");
  QFile file(folder_.filePath(QStringLiteral("engine log#1.log")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const auto start = std::chrono::steady_clock::now();
  workspace_.openFile(file.fileName());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
  EXPECT_EQ(QUrl::fromEncoded(called()).toLocalFile(), file.fileName());
}

TEST_F(DesktopWorkspaceTest, OpensNothingForAMissingFile) {
  install("xdg-open");
  workspace_.openFile(folder_.filePath(QStringLiteral("missing")));
  eventually([] { return false; }, 200);
  EXPECT_FALSE(QFile::exists(calls_));
}

TEST_F(DesktopWorkspaceTest, OpensTheAccessibilitySettings) {
  const ScopedVariable desktop("XDG_CURRENT_DESKTOP", "KDE");
  EXPECT_FALSE(workspace_.hasAccessibilitySettings());
  workspace_.openAccessibilitySettings();
  install("systemsettings");
  EXPECT_TRUE(workspace_.hasAccessibilitySettings());
  workspace_.openAccessibilitySettings();
  EXPECT_EQ(called(), "kcm_access");
}

TEST_F(DesktopWorkspaceTest, AProgramThatItStartsGetsTheDesktopsTokenOnce) {
  const ScopedVariable desktop("XDG_CURRENT_DESKTOP", "KDE");
  install("systemsettings");
  keepActivationToken("of the choice");
  workspace_.openAccessibilitySettings();
  EXPECT_EQ(called(), "kcm_access token of the choice");
  EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "other threads read it";
  QFile::remove(calls_);
  workspace_.openAccessibilitySettings();
  EXPECT_EQ(called(), "kcm_access");
}

TEST_F(DesktopWorkspaceTest, RingsTheDisplaysBellWhereNoSoundCanBePlayed) {
  const ScopedVariable driver("CANBERRA_DRIVER", "missing");
  std::thread([this] { workspace_.beep(); }).join();
  EXPECT_TRUE(eventually([this] { return bells_ == 1; }));
  EXPECT_FALSE(rangOnMainThread_);
  // The next one may come when the first has ended.
  EXPECT_TRUE(eventually([this] {
    workspace_.beep();
    return bells_ >= 2;
  }));
  eventually([] { return false; }, 100);
}

TEST_F(DesktopWorkspaceTest, ABeepThatHangsSwallowsNoLaterOnes) {
  const auto hangs = std::make_shared<std::atomic<bool>>(true);
  const auto sounds = std::make_shared<std::atomic<int>>(0);
  DesktopWorkspace workspace([this] { ++bells_; },
                             {.play =
                                  [=] {
                                    ++*sounds;
                                    while (*hangs)
                                      std::this_thread::sleep_for(std::chrono::milliseconds(1));
                                    return true;
                                  },
                              .longest = std::chrono::milliseconds(20)});
  workspace.beep();
  EXPECT_TRUE(eventually([&] { return *sounds == 1; }));
  EXPECT_TRUE(eventually([&] {
    workspace.beep();
    return *sounds == 2;
  }));
  // Nor do they take threads without end: the display's bell has to do.
  EXPECT_TRUE(eventually([&] {
    workspace.beep();
    return bells_ > 0;
  }));
  EXPECT_LE(*sounds, 4);
  *hangs = false;
  eventually([] { return false; }, 100);
}

}  // namespace
}  // namespace tavin::desktop
