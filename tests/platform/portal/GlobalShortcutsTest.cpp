#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDBusMetaType>

#include "FakePortal.h"
#include "platform/ActivationToken.h"
#include "platform/Eventually.h"
#include "platform/portal/GlobalShortcuts.h"
#include "platform/shortcuts/RegisteredHotkeys.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace HotkeyModifiers;

constexpr std::uint32_t escape = 53;
const QString speakId = QStringLiteral("speak-alt-escape");
const QString pauseId = QStringLiteral("pause-alt-shift-escape");

class GlobalShortcutsTest : public ::testing::Test {
 protected:
  void start() {
    service =
        std::make_unique<shortcuts::RegisteredHotkeys>(std::make_unique<portal::GlobalShortcuts>(
            [this](const shortcuts::KeyCombination& combination) -> std::optional<QString> {
              return combination == shortcuts::KeyCombination::of(escape, heldByDesktop)
                         ? std::optional(QStringLiteral("the desktop"))
                         : std::nullopt;
            }));
    service->installEventHandler([this](EventHotKeyID id) { presses.push_back(id.id); });
    service->installAnswerHandler([this](const HotkeyRegistration& answer) {
      answers.push_back(answer.status);
      reason = answer.reason;
    });
  }
  HotkeyRegistration add(std::uint32_t modifiers, std::uint32_t id) {
    return service->registerEventHotKey(escape, modifiers, {.signature = 0, .id = id});
  }
  void addBoth() {
    speak = add(optionKey, 1).ref;
    pause = add(optionKey | shiftKey, 2).ref;
  }
  bool answered(std::size_t count) {
    return eventually([&] { return answers.size() >= count; });
  }
  std::vector<std::string> calls() const {
    std::vector<std::string> names;
    for (const QString& call : portal->calls) names.push_back(call.toStdString());
    return names;
  }
  void press(const QString& id) {
    portal->activate(id);
    portal->deactivate(id);
  }

  int argumentCount = 0;
  QCoreApplication application{argumentCount, nullptr};
  std::unique_ptr<FakePortal> portal = std::make_unique<FakePortal>();
  std::unique_ptr<HotkeyService> service;
  std::uint32_t heldByDesktop = 0;
  EventHotKeyRef speak, pause;
  std::vector<std::int32_t> answers;
  std::vector<std::uint32_t> presses;
  QString reason;
};

TEST_F(GlobalShortcutsTest, IsRefusedUntilTheDesktopHasAnswered) {
  start();
  const HotkeyRegistration first = add(optionKey, 1);
  EXPECT_EQ(first.status, -1);
  EXPECT_NE(first.ref, nullptr);
  ASSERT_TRUE(answered(1));
  EXPECT_THAT(answers, ElementsAre(0));
}

TEST_F(GlobalShortcutsTest, SaysWhoItIsFirstAndListsBeforeItAsksOnce) {
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(calls(), ElementsAre("Register app.tavin.Tavin", "CreateSession", "ListShortcuts",
                                   "BindShortcuts"));
  EXPECT_TRUE(portal->session.endsWith("/tavin"));
  ASSERT_EQ(portal->lastBind.size(), 2);
  EXPECT_EQ(portal->lastBind[0].id, speakId);
  EXPECT_EQ(portal->lastBind[0].properties["preferred_trigger"], "ALT+Escape");
  EXPECT_EQ(portal->lastBind[1].properties["preferred_trigger"], "ALT+SHIFT+Escape");
}

TEST_F(GlobalShortcutsTest, ResultsOfAnotherTypeAreARefusal) {
  using Texts = QMap<QString, QString>;
  qDBusRegisterMetaType<Texts>();
  for (const QVariant& odd :
       {QVariant::fromValue(Texts{{"session_handle", "/a"}}),
        QVariant(QStringList{"session_handle"}), QVariant("session_handle")}) {
    answers.clear();
    portal->session.clear();
    portal->oddResults = odd;
    start();
    add(optionKey, 1);
    ASSERT_TRUE(answered(1)) << odd.typeName();
    EXPECT_NE(answers.front(), 0);
  }
}

TEST_F(GlobalShortcutsTest, WhatTheDesktopRemembersOpensNoDialog) {
  portal->remembered = {withKey(speakId, "Alt+Esc"), withKey(pauseId, "Shift+Alt+Esc")};
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers, ElementsAre(0, 0));
  EXPECT_FALSE(portal->calls.contains("BindShortcuts"));
}

TEST_F(GlobalShortcutsTest, AnEndOfAnotherKindWithTheShortcutsIsAYes) {
  portal->bindCode = 2;
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers, ElementsAre(0, 0));
}

TEST_F(GlobalShortcutsTest, AnEndOfAnotherKindWithoutThemIsANo) {
  portal->bindCode = 2;
  portal->bindTellsShortcuts = false;
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers, ElementsAre(-1, -1));
}

TEST_F(GlobalShortcutsTest, AShortcutWithoutAKeyIsNotBound) {
  portal->bindGivesKey.clear();
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers, ElementsAre(-1, -1));
  press(speakId);
  portal->remembered.clear();
  EXPECT_FALSE(eventually([&] { return !presses.empty(); }, 200));
}

TEST_F(GlobalShortcutsTest, AKeyThatTheDesktopHoldsIsNeverAskedFor) {
  heldByDesktop = optionKey;
  start();
  const HotkeyRegistration held = add(optionKey, 1);
  EXPECT_EQ(held.ref, nullptr);
  EXPECT_EQ(held.reason, "it is the key of the desktop");
  add(optionKey | shiftKey, 1);
  ASSERT_TRUE(answered(1));
  EXPECT_EQ(portal->lastBind.size(), 1);
}

TEST_F(GlobalShortcutsTest, ADeclinedDialogIsNotOpenedAgain) {
  portal->bindCode = 1;
  portal->bindTellsShortcuts = false;
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(reason, "it was declined in the desktop's dialog");
  portal->closeSession();
  ASSERT_TRUE(eventually([&] { return portal->calls.count("ListShortcuts") == 2; }));
  EXPECT_FALSE(eventually([&] { return portal->calls.count("BindShortcuts") == 2; }, 200));
}

TEST_F(GlobalShortcutsTest, EachPressIsOneHoweverLongItIsHeld) {
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  for (int i = 0; i < 5; ++i) portal->activate(speakId);
  portal->deactivate(speakId);
  press(pauseId);
  press(speakId);
  ASSERT_TRUE(eventually([&] { return presses.size() >= 3; }));
  EXPECT_THAT(presses, ElementsAre(1, 2, 1));
}

TEST_F(GlobalShortcutsTest, KeepsTheDesktopsTokenForTheWindowThatAnswersAPress) {
  start();
  add(optionKey, 1);
  ASSERT_TRUE(answered(1));
  press(speakId);
  ASSERT_TRUE(eventually([&] { return presses.size() == 1; }));
  EXPECT_EQ(takeActivationToken(), "");
  portal->activate(speakId, {{"activation_token", "of the press"}});
  ASSERT_TRUE(eventually([&] { return presses.size() == 2; }));
  EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "other threads read it";
  EXPECT_EQ(takeActivationToken(), "of the press");
  portal->deactivate(speakId);
  portal->activate(speakId, {{"activation_token", QStringList{"no", "text"}}});
  ASSERT_TRUE(eventually([&] { return presses.size() == 3; }));
  portal->activate("of another program", {{"activation_token", "of another press"}});
  portal->deactivate(speakId);
  press(speakId);
  ASSERT_TRUE(eventually([&] { return presses.size() == 4; }));
  EXPECT_EQ(takeActivationToken(), "");
}

TEST_F(GlobalShortcutsTest, AnotherPresetTakesANewSessionOfTheSameName) {
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  service->unregisterEventHotKey(speak);
  service->unregisterEventHotKey(pause);
  add(controlKey, 1);
  add(controlKey | shiftKey, 2);
  ASSERT_TRUE(answered(4));
  EXPECT_EQ(portal->calls.count("Close"), 1);
  press(speakId);
  press("speak-ctrl-escape");
  ASSERT_TRUE(eventually([&] { return !presses.empty(); }));
  EXPECT_THAT(presses, ElementsAre(1));
  EXPECT_EQ(portal->lastBind[0].id, "speak-ctrl-escape");
}

TEST_F(GlobalShortcutsTest, APresetChosenWhileTheDialogIsOpenClosesIt) {
  portal->dialogStaysOpen = true;
  start();
  addBoth();
  ASSERT_TRUE(eventually([&] { return portal->calls.contains("BindShortcuts"); }));
  portal->dialogStaysOpen = false;
  service->unregisterEventHotKey(speak);
  service->unregisterEventHotKey(pause);
  add(controlKey, 1);
  ASSERT_TRUE(answered(1));
  EXPECT_THAT(answers, ElementsAre(0));
}

TEST_F(GlobalShortcutsTest, APresetChosenWhileTheSessionIsBeingMadeIsTheOneAskedFor) {
  start();
  speak = add(optionKey, 1).ref;
  QCoreApplication::processEvents();
  service->unregisterEventHotKey(speak);
  add(controlKey, 1);
  ASSERT_TRUE(answered(1));
  ASSERT_EQ(portal->lastBind.size(), 1);
  EXPECT_EQ(portal->lastBind[0].id, "speak-ctrl-escape");
}

TEST_F(GlobalShortcutsTest, ARestartedPortalIsAskedForWhatItRemembers) {
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  portal->activate(pauseId);  // And its release is lost with the portal.
  ASSERT_TRUE(eventually([&] { return presses.size() == 1; }));
  presses.clear();
  portal.reset();
  ASSERT_TRUE(answered(4));
  EXPECT_THAT(answers, ElementsAre(0, 0, -1, -1)) << "no key works while it is away";
  portal = std::make_unique<FakePortal>();
  portal->remembered = {withKey(speakId, "Alt+Esc"), withKey(pauseId, "Shift+Alt+Esc")};
  ASSERT_TRUE(answered(6));
  EXPECT_THAT(answers, ElementsAre(0, 0, -1, -1, 0, 0));
  EXPECT_EQ(portal->calls.front(), "Register app.tavin.Tavin");
  press(pauseId);
  ASSERT_TRUE(eventually([&] { return !presses.empty(); }));
  EXPECT_EQ(presses.front(), 2U);
  EXPECT_FALSE(portal->calls.contains("BindShortcuts"));
}

TEST_F(GlobalShortcutsTest, ADialogThatTheDesktopClosesIsNotOpenedAgain) {
  portal->dialogStaysOpen = true;
  start();
  addBoth();
  ASSERT_TRUE(eventually([&] { return portal->calls.contains("BindShortcuts"); }));
  portal->closeSession();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers, ElementsAre(-1, -1));
  EXPECT_FALSE(eventually([&] { return portal->calls.count("BindShortcuts") > 1; }, 200));
}

TEST_F(GlobalShortcutsTest, APortalWithoutShortcutsIsANoUntilABetterOneComes) {
  portal->hasShortcuts = false;
  start();
  addBoth();
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers, ElementsAre(-1, -1));
  EXPECT_EQ(reason, "the desktop has no portal for shortcuts");
  portal.reset();
  portal = std::make_unique<FakePortal>();
  ASSERT_TRUE(answered(4));
  EXPECT_EQ(answers.back(), 0);
}

TEST_F(GlobalShortcutsTest, OtherKeysHaveNoShortcut) {
  start();
  EXPECT_EQ(service->registerEventHotKey(0, optionKey, {}).ref, nullptr);
  EXPECT_EQ(add(0x10000, 1).ref, nullptr);
  EXPECT_THAT(answers, IsEmpty());
}

}  // namespace
}  // namespace tavin::test
