#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <thread>

#include "platform/Eventually.h"
#include "platform/atspi/Program.h"
#include "platform/copy/CopyKeyboard.h"
#include "platform/copy/TypeCopy.h"
#include "platform/wayland/SwayTree.h"
#include "platform/wayland/VirtualKeyboard.h"
#include "platform/wayland/WaylandWindowSystem.h"

namespace tavin::wayland {
namespace {

using test::kCopyKey;
using test::Program;
using PrimaryProof = windows::WindowSystem::PrimaryProof;

const QString kOwnAppId = "app.tavin.Tavin";

// A window with such an application id; a terminal, whose program does nothing.
std::unique_ptr<Program> terminalWindow(const QString& appId) {
  return std::make_unique<Program>(
      QStringList{"foot", "--app-id", appId, "--title", appId, "sleep", "600"});
}

class WaylandWindowSystemTest : public testing::Test {
 protected:
  // Once that window has the keyboard.
  windows::FrontWindow frontOf(const std::string& appId) {
    EXPECT_TRUE(eventually(
        [&] {
          const auto front = compositor_->front(Deadline::in(1));
          return front && front->window.appId == appId;
        },
        20'000))
        << appId;
    return windows_.frontWindow();
  }
  void select(const QString& text) {
    QProcess tool;
    tool.start("wl-copy", {"--primary", text});
    EXPECT_TRUE(tool.waitForFinished(10'000));
  }
  std::optional<QString> primary(const windows::FrontWindow& window, PrimaryProof proof) {
    return windows_.primaryText(window, proof, Deadline::in(1));
  }
  bool becomesPrimary(const windows::FrontWindow& window, const QString& text) {
    return eventually([&] { return primary(window, PrimaryProof::takenInFront) == text; });
  }
  std::unique_ptr<Program> field() {
    return std::make_unique<Program>(QStringList{QT6_FIELD, "some text"});
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  std::shared_ptr<Compositor> compositor_ = Compositor::connect();
  WaylandWindowSystem windows_{compositor_};
};

TEST_F(WaylandWindowSystemTest, WithoutAWindowThereIsNone) {
  EXPECT_TRUE(eventually([this] { return windows_.frontWindow().id == 0; }));
}

TEST_F(WaylandWindowSystemTest, TellsTheActiveWindowAndItsProcess) {
  const auto window = field();
  const auto front = frontOf("qt6_field");
  EXPECT_EQ(front.processId, window->processId());
  EXPECT_FALSE(front.terminal || front.browser || front.withoutCopyKey || front.unknown);
  EXPECT_TRUE(windows_.windowProcesses().contains(window->processId()));
  const auto terminal = terminalWindow("unheard-of");
  const auto other = frontOf("unheard-of");
  EXPECT_NE(other.id, front.id);
  EXPECT_TRUE(other.terminal) << "by the pseudo-terminal of its process";
}

TEST_F(WaylandWindowSystemTest, KnowsProgramsByTheirApplicationId) {
  {
    const auto window = terminalWindow("Firefox");
    EXPECT_TRUE(frontOf("Firefox").browser);
  }
  const auto window = terminalWindow("org.pwmt.zathura");
  EXPECT_TRUE(frontOf("org.pwmt.zathura").withoutCopyKey);
}

TEST_F(WaylandWindowSystemTest, WithoutSwaysSocketTheProcessIsUnknownWhateverTheApplicationId) {
  const QByteArray socket = qgetenv("SWAYSOCK");
  qunsetenv("SWAYSOCK");
  {
    const auto window = field();
    const auto front = frontOf("qt6_field");
    EXPECT_EQ(front.processId, 0);
    EXPECT_TRUE(front.unknown) << "a terminal can have any name";
    EXPECT_FALSE(front.terminal);
  }
  {
    const auto window = terminalWindow("foot");
    EXPECT_TRUE(frontOf("foot").terminal);
  }
  qputenv("SWAYSOCK", "/nonexistent");
  EXPECT_FALSE(readSwayTree(Deadline::in(1)));
  qputenv("SWAYSOCK", socket);
  EXPECT_TRUE(readSwayTree(Deadline::in(1)));
}

TEST_F(WaylandWindowSystemTest, PrimaryIsOfTheWindowInWhichItChanged) {
  select("made before any window");
  const auto window = field();
  const auto front = frontOf("qt6_field");
  EXPECT_EQ(primary(front, PrimaryProof::sameProgram), std::nullopt);
  select("made here");
  EXPECT_TRUE(becomesPrimary(front, "made here"));
  EXPECT_EQ(primary(front, PrimaryProof::sameProgram), "made here");
  {
    const auto terminal = terminalWindow("foot");
    const auto other = frontOf("foot");
    EXPECT_EQ(primary(other, PrimaryProof::sameProgram), std::nullopt);
    EXPECT_EQ(primary(other, PrimaryProof::takenInFront), std::nullopt);
    EXPECT_EQ(primary(front, PrimaryProof::sameProgram), std::nullopt) << "no longer in front";
  }
  EXPECT_EQ(frontOf("qt6_field").id, front.id);
  EXPECT_EQ(primary(front, PrimaryProof::sameProgram), "made here");
  EXPECT_EQ(primary(front, PrimaryProof::takenInFront), std::nullopt) << "not ever since";
}

TEST_F(WaylandWindowSystemTest, AnotherWindowOfAProgramHasItsPrimaryUnlessItIsATerminal) {
  const auto one = field();
  const auto first = frontOf("qt6_field");
  select("made in the first");
  EXPECT_TRUE(becomesPrimary(first, "made in the first"));
  const auto two = field();
  EXPECT_TRUE(eventually([&] { return windows_.frontWindow().id > first.id; }));
  const auto second = windows_.frontWindow();
  EXPECT_EQ(primary(second, PrimaryProof::sameProgram), "made in the first");
  EXPECT_EQ(primary(second, PrimaryProof::takenInFront), std::nullopt);
  auto terminal = second;
  terminal.terminal = true;
  EXPECT_EQ(primary(terminal, PrimaryProof::sameProgram), std::nullopt);
}

TEST_F(WaylandWindowSystemTest, OurOwnWindowChangesNoProof) {
  const auto window = field();
  const auto front = frontOf("qt6_field");
  select("made here");
  EXPECT_TRUE(becomesPrimary(front, "made here"));
  {
    const auto menu = terminalWindow(kOwnAppId);
    frontOf(kOwnAppId.toStdString());
  }
  frontOf("qt6_field");
  EXPECT_EQ(primary(front, PrimaryProof::takenInFront), "made here");
}

TEST_F(WaylandWindowSystemTest, AfterACommandItWaitsForTheMenuToGo) {
  const auto window = field();
  const auto front = frontOf("qt6_field");
  auto menu = terminalWindow(kOwnAppId);
  const auto inMenu = frontOf(kOwnAppId.toStdString());
  EXPECT_NE(inMenu.id, front.id);
  windows_.menuCommandChosen();
  std::thread closing([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    menu.reset();
  });
  EXPECT_EQ(windows_.frontWindow().id, front.id);
  closing.join();
}

TEST_F(WaylandWindowSystemTest, AMenuThatStaysIsWaitedForHalfASecond) {
  const auto menu = terminalWindow(kOwnAppId);
  const auto inMenu = frontOf(kOwnAppId.toStdString());
  windows_.menuCommandChosen();
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(windows_.frontWindow().id, inMenu.id);
  EXPECT_GE(timer.elapsed(), 490);
  EXPECT_LT(timer.elapsed(), 900);
}

class VirtualKeyboardTest : public WaylandWindowSystemTest {
 protected:
  void SetUp() override {
    record_ = folder_.filePath("record");
    terminal_ = std::make_unique<Program>(QStringList{
        "foot", "--app-id", "foot", "/usr/bin/python3", BYTE_WATCH_SCRIPT, record_, "text"});
    frontOf("foot");
    ASSERT_TRUE(eventually([this] { return recorded() == "ready\n"; }, 20'000));
  }
  QByteArray recorded() {
    QFile file(record_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  bool typeCopy(std::uint64_t flags = EventFlags::command) {
    return test::typeCopy(keyboard_, flags);
  }

  QTemporaryDir folder_;
  QString record_;
  std::unique_ptr<Program> terminal_;
  bool allowed_ = true;
  copy::CopyKeyboard keyboard_{VirtualKeyboard::create(), [this] { return allowed_; }};
};

// What a terminal sends for Control+Insert.
const QByteArray kChord = "bytes 1b5b323b357e\n";

TEST_F(VirtualKeyboardTest, TheCopyCommandArrivesAsControlInsert) {
  EXPECT_TRUE(typeCopy());
  EXPECT_TRUE(eventually([this] { return recorded() == "ready\n" + kChord; }))
      << recorded().toStdString();
  EXPECT_TRUE(typeCopy());
  EXPECT_TRUE(eventually([this] { return recorded() == "ready\n" + kChord + kChord; }));
}

TEST_F(VirtualKeyboardTest, WhatTheUserHoldsDownDoesNotMatter) {
  QProcess user;
  user.start(WAYLAND_INPUT, {});
  user.write("key 56 1\n");
  ASSERT_TRUE(eventually([&] { return user.readAllStandardOutput().count("done") > 0; }));
  EXPECT_EQ(keyboard_.flagsState(), 0u);
  EXPECT_TRUE(typeCopy());
  EXPECT_TRUE(eventually([this] { return recorded() == "ready\n" + kChord; }))
      << recorded().toStdString();
  user.write("key 56 0\n");
  user.closeWriteChannel();
  EXPECT_TRUE(user.waitForFinished(10'000));
}

TEST_F(VirtualKeyboardTest, NothingIsMadeWhereItIsNotAllowed) {
  allowed_ = false;
  EXPECT_FALSE(typeCopy());
  allowed_ = true;
  EXPECT_EQ(keyboard_.createKeyboardEvent(kCopyKey, false), nullptr) << "there is nothing down";
  EXPECT_EQ(keyboard_.createKeyboardEvent(kCopyKey + 1, true), nullptr);
  EXPECT_TRUE(typeCopy(EventFlags::command | EventFlags::shift)) << "made, but it types nothing";
  EXPECT_TRUE(typeCopy());
  EXPECT_TRUE(eventually([this] { return recorded() == "ready\n" + kChord; }))
      << recorded().toStdString();
}

}  // namespace
}  // namespace tavin::wayland
