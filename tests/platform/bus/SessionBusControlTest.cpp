#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <atomic>
#include <chrono>
#include <thread>

#include "platform/ActivationToken.h"
#include "platform/Eventually.h"
#include "platform/bus/SessionBusControl.h"

namespace tavin::desktop {
namespace {

using Clock = std::chrono::steady_clock;
using testing::ElementsAre;
using testing::IsEmpty;

QDBusConnection connectTo(const char* name) {
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QLatin1String(name));
}

class SessionBusControlTest : public testing::Test {
 protected:
  ~SessionBusControlTest() override {
    control_.reset();
    for (const char* name : {"tavin", "client", "second"})
      QDBusConnection::disconnectFromBus(QLatin1String(name));
  }

  RemoteActions actions() {
    return {.activate = [this] { done_.emplace_back("activate"); },
            .speakOrStop = [this] { done_.emplace_back("speak"); },
            .togglePause = [this] { done_.emplace_back("pause"); },
            .stop = [this] { done_.emplace_back("stop"); },
            .nextSentence = [this] { done_.emplace_back("next sentence"); },
            .previousSentence = [this] { done_.emplace_back("previous sentence"); },
            .nextParagraph = [this] { done_.emplace_back("next paragraph"); },
            .previousParagraph = [this] { done_.emplace_back("previous paragraph"); },
            .repeatSentence = [this] { done_.emplace_back("repeat"); },
            .faster = [this] { done_.emplace_back("faster"); },
            .slower = [this] { done_.emplace_back("slower"); }};
  }

  // The error's name, or nothing when the call was answered.
  QString call(const char* method, const QVariantList& arguments,
               const char* interface = "org.freedesktop.Application") {
    auto message = QDBusMessage::createMethodCall(QStringLiteral("app.tavin.Tavin"),
                                                  QStringLiteral("/app/tavin/Tavin"),
                                                  QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    const QDBusPendingReply<> reply = client_.asyncCall(message);
    EXPECT_TRUE(eventually([&] { return reply.isFinished(); }));
    return reply.isError() ? reply.error().name() : QString();
  }

  QString callAction(const char* action) {
    return call("ActivateAction", {QLatin1String(action), QVariant(QVariantList()), QVariantMap()});
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  std::unique_ptr<bus::SessionBusControl> control_ =
      std::make_unique<bus::SessionBusControl>(connectTo("tavin"));
  QDBusConnection client_ = connectTo("client");
  std::vector<std::string> done_;
};

TEST_F(SessionBusControlTest, KeepsTheDesktopsTokenForTheWindowThatAnswers) {
  ASSERT_TRUE(control_->takeName());
  control_->serve(actions());
  EXPECT_EQ(call("Activate", {QVariantMap()}), QString());
  EXPECT_EQ(takeActivationToken(), "");
  EXPECT_EQ(call("Activate", {QVariantMap{{"desktop-startup-id", "older"}}}), QString());
  EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "other threads read it";
  EXPECT_EQ(takeActivationToken(), "older");
  const QVariantMap both{{"desktop-startup-id", "older"}, {"activation-token", "newer"}};
  EXPECT_EQ(call("ActivateAction", {"speak", QVariant(QVariantList()), both}), QString());
  EXPECT_EQ(takeActivationToken(), "newer");
  const QVariantMap wrong{{"activation-token", "of nothing that is done"}};
  EXPECT_NE(call("ActivateAction", {"dance", QVariant(QVariantList()), wrong}), QString());
  EXPECT_EQ(call("Activate", {QVariantMap{{"activation-token", QString(200'000, 'x')}}}),
            QString());
  EXPECT_EQ(call("ActivateAction", {"stop", QVariant(QVariantList()),
                                    QVariantMap{{"activation-token", QVariantList{1}}}}),
            QString());
  EXPECT_EQ(takeActivationToken(), "");
}

TEST_F(SessionBusControlTest, CarriesOutEachAction) {
  ASSERT_TRUE(control_->takeName());
  control_->serve(actions());
  EXPECT_EQ(call("Activate", {QVariantMap()}), QString());
  for (const char* action : {"speak", "pause", "stop", "menu"})
    EXPECT_EQ(callAction(action), QString());
  EXPECT_TRUE(eventually([this] { return done_.size() == 5; }));
  EXPECT_THAT(done_, ElementsAre("activate", "speak", "pause", "stop", "activate"));
}

TEST_F(SessionBusControlTest, CarriesOutEachMoveInTheText) {
  ASSERT_TRUE(control_->takeName());
  control_->serve(actions());
  for (const char* action :
       {"next", "previous", "next-paragraph", "previous-paragraph", "repeat", "faster", "slower"})
    EXPECT_EQ(callAction(action), QString());
  EXPECT_TRUE(eventually([this] { return done_.size() == 7; }));
  EXPECT_THAT(done_, ElementsAre("next sentence", "previous sentence", "next paragraph",
                                 "previous paragraph", "repeat", "faster", "slower"));
}

TEST_F(SessionBusControlTest, KeepsRequestsThatComeBeforeItServes) {
  ASSERT_TRUE(control_->takeName());
  EXPECT_EQ(callAction("speak"), QString());
  EXPECT_EQ(callAction("stop"), QString());
  EXPECT_THAT(done_, IsEmpty());
  control_->serve(actions());
  EXPECT_THAT(done_, ElementsAre("speak", "stop"));
}

TEST_F(SessionBusControlTest, RefusesWhatItDoesNotKnow) {
  ASSERT_TRUE(control_->takeName());
  control_->serve(actions());
  const QString invalid = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(callAction("explode"), invalid);
  EXPECT_EQ(call("ActivateAction", {QStringLiteral("speak")}), invalid);
  EXPECT_EQ(call("Activate", {}), invalid);
  EXPECT_EQ(call("Dance", {}), QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
  EXPECT_NE(call("Activate", {QVariantMap()}, "org.example.Other"), QString());
  EXPECT_EQ(call("Open", {QStringList(QStringLiteral("file:///etc/passwd")), QVariantMap()}),
            QString());
  eventually([] { return false; }, 50);
  EXPECT_THAT(done_, IsEmpty());
}

TEST_F(SessionBusControlTest, ASecondStartHandsOverToTheFirst) {
  ASSERT_TRUE(control_->takeName());
  control_->serve(actions());
  std::atomic<bool> handedOver = false;
  std::thread second([&] {
    bus::SessionBusControl control(connectTo("second"));
    EXPECT_FALSE(control.takeName());
    control.activateOther();
    handedOver = true;
  });
  EXPECT_TRUE(eventually([&] { return handedOver.load(); }));
  second.join();
  EXPECT_TRUE(eventually([this] { return done_.size() == 1; }));
  EXPECT_THAT(done_, ElementsAre("activate"));
}

TEST_F(SessionBusControlTest, ASecondStartDoesNotWaitForAFirstThatHangs) {
  ASSERT_TRUE(control_->takeName());
  bus::SessionBusControl second(connectTo("second"));
  EXPECT_FALSE(second.takeName());
  const auto start = Clock::now();
  second.activateOther();  // The first is on this thread, which runs no event loop meanwhile.
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
}

TEST_F(SessionBusControlTest, GivesTheNameBackWhenItGoes) {
  ASSERT_TRUE(control_->takeName());
  control_.reset();
  bus::SessionBusControl second(connectTo("second"));
  EXPECT_TRUE(eventually([&] { return second.takeName(); }));
}

TEST_F(SessionBusControlTest, RunsWithoutABus) {
  bus::SessionBusControl lonely(
      QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere"), QStringLiteral("none")));
  EXPECT_TRUE(lonely.takeName());
  lonely.serve(actions());
}

}  // namespace
}  // namespace tavin::desktop
