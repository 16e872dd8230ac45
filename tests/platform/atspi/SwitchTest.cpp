#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <csignal>

#include "platform/atspi/BusAddress.h"
#include "platform/atspi/Object.h"
#include "platform/atspi/Program.h"
#include "platform/atspi/Switch.h"
#include "platform/bus/SessionBus.h"
#include "platform/capture/CaptureTest.h"

namespace tavin::test {
namespace {

using atspi::SwitchState;

class SwitchTest : public CaptureTest {
 protected:
  void TearDown() override {
    if (QDBusConnection::sessionBus().isConnected())
      set("ScreenReaderEnabled", false);
    CaptureTest::TearDown();
  }
  static atspi::Switches switches() {
    return atspi::readSwitches(bus::sessionBus(), Deadline::in(5));
  }
  static SwitchState state() { return switches().accessibility; }
  static void set(const QString& property, bool value) {
    auto message = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                  "org.freedesktop.DBus.Properties", "Set");
    message << "org.a11y.Status" << property << QVariant::fromValue(QDBusVariant(value));
    QDBusConnection::sessionBus().call(message);
  }
  static void turnOff() {
    set("IsEnabled", false);
    ASSERT_EQ(state(), SwitchState::off);
  }
  bool trusted(bool prompt = false) { return capture_->accessibility->isProcessTrusted(prompt); }
};

TEST_F(SwitchTest, TrustedMeansThatAccessibilityIsOn) {
  EXPECT_TRUE(trusted());
  EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(SwitchTest, OffIsNotTrustedAndAskingTurnsItOn) {
  turnOff();
  EXPECT_FALSE(trusted());
  EXPECT_EQ(state(), SwitchState::off) << "looking alone changes nothing";
  EXPECT_TRUE(trusted(true));
  EXPECT_EQ(state(), SwitchState::on);
  EXPECT_EQ(log_.lines().size(), 1);
  EXPECT_TRUE(trusted());
  EXPECT_EQ(log_.lines().size(), 1);
}

TEST_F(SwitchTest, TurnedOffUnderUsItIsTurnedOnAgainOnce) {
  EXPECT_TRUE(trusted());
  turnOff();
  EXPECT_TRUE(trusted());
  EXPECT_EQ(log_.lines().size(), 1);
  turnOff();
  EXPECT_FALSE(trusted()) << "whoever turns it off twice means it";
  EXPECT_TRUE(trusted(true));
}

TEST_F(SwitchTest, WhoHasAScreenReaderIsToldOnceHowToSilenceIt) {
  EXPECT_TRUE(trusted());
  EXPECT_EQ(log_.lines(), QStringList());
  set("ScreenReaderEnabled", true);
  EXPECT_TRUE(eventually([] { return switches().screenReader; }));
  EXPECT_TRUE(trusted());
  EXPECT_TRUE(trusted());
  ASSERT_EQ(log_.lines().size(), 1);
  EXPECT_TRUE(log_.lines()[0].contains("mutes Orca"));
}

// The process that serves the switch stands still as long as this lives.
class Standstill {
 public:
  Standstill() : process_(switchProcess()) {
    EXPECT_GT(process_, 1);
    signal(SIGSTOP);
  }
  ~Standstill() { signal(SIGCONT); }
  Standstill(const Standstill&) = delete;
  Standstill& operator=(const Standstill&) = delete;

 private:
  static pid_t switchProcess() {
    auto message =
        QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                       "org.freedesktop.DBus", "GetConnectionUnixProcessID");
    message << "org.a11y.Bus";
    return static_cast<pid_t>(atspi::valueIn(QDBusConnection::sessionBus().call(message)).toUInt());
  }
  void signal(int number) const {
    if (process_ > 1)
      kill(process_, number);
  }

  const pid_t process_;
};

TEST_F(SwitchTest, ALateServiceIsNotTrustedAndTurnsOnWhenItWakesUp) {
  turnOff();
  {
    const Standstill late;
    EXPECT_EQ(atspi::readSwitches(bus::sessionBus(), Deadline::in(0.2)).accessibility,
              SwitchState::late);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(trusted());
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(log_.lines(), QStringList());
    EXPECT_FALSE(trusted(true));
    EXPECT_LT(timer.elapsed(), 2500);
    EXPECT_EQ(log_.lines().size(), 1);
  }
  EXPECT_TRUE(eventually([] { return state() == SwitchState::on; }));
  EXPECT_TRUE(trusted());
}

TEST_F(SwitchTest, ALateServiceThatNobodyAskedStaysOff) {
  turnOff();
  {
    const Standstill late;
    EXPECT_FALSE(trusted());
  }
  EXPECT_EQ(state(), SwitchState::off);
  EXPECT_FALSE(trusted());
}

TEST_F(SwitchTest, WhatWasOnIsTrustedWhileTheServiceIsLate) {
  EXPECT_TRUE(trusted(true));
  const Standstill late;
  EXPECT_TRUE(trusted());
}

// Runs last in this file: it ends the session's accessibility bus.
class BusTest : public SwitchTest {
 protected:
  static pid_t busProcess() {
    const QString address = atspi::busAddress(bus::sessionBus(), Deadline::in(5));
    const auto bus = QDBusConnection::connectToBus(address, "test");
    const auto question =
        QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                       "org.freedesktop.DBus", "GetConnectionUnixProcessID");
    auto message = question;
    message << "org.freedesktop.DBus";
    const auto answer = bus.call(message);
    QDBusConnection::disconnectFromBus("test");
    return static_cast<pid_t>(atspi::valueIn(answer).toUInt());
  }
};

TEST_F(BusTest, ABusThatHangsIsGivenUpInTimeAndOneThatRestartsIsFoundAgain) {
  const QString file = fileWith("a text");
  const QStringList command{"mousepad", "--disable-server", file};
  const pid_t bus = busProcess();
  ASSERT_GT(bus, 1);
  {
    const Program editor(command);
    EXPECT_TRUE(becomesSelected("a text", [this] { selectAll(); }));
    kill(bus, SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(selectedText(), std::nullopt);
    EXPECT_LT(timer.elapsed(), 1500);
    const auto fresh = captureOnX11(log_);
    timer.restart();
    fresh->accessibility->isProcessTrusted(false);
    EXPECT_LT(timer.elapsed(), 1500) << "nor does connecting to it hang";
  }
  kill(bus, SIGKILL);
  // A program that asks before the bus's launcher has noticed gets the dead address for life.
  ASSERT_TRUE(eventually([&] { return busProcess() > 1 && busProcess() != bus; }, 10'000));
  const Program editor(command);
  EXPECT_TRUE(becomesSelected("a text", [this] { selectAll(); }));
}

using NoBusTest = SwitchTest;

TEST_F(NoBusTest, WithoutASessionBusACopyIsEnough) {
  EXPECT_EQ(state(), SwitchState::missing);
  EXPECT_TRUE(trusted());
  EXPECT_EQ(selectedText(), std::nullopt);
}

using NoServiceTest = SwitchTest;

TEST_F(NoServiceTest, OnASessionBusWithoutAccessibilityACopyIsEnough) {
  ASSERT_TRUE(QDBusConnection::sessionBus().isConnected());
  EXPECT_EQ(state(), SwitchState::missing);
  EXPECT_TRUE(trusted());
}

}  // namespace
}  // namespace tavin::test
