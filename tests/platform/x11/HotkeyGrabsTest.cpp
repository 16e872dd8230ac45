#include <gmock/gmock.h>

#include <QProcess>
#include <thread>

#include "hotkeys/HotkeyCenter.h"
#include "platform/SystemLog.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/x11/HotkeyGrabs.h"
#include "platform/x11/HotkeyTest.h"

namespace tavin::x11 {
namespace {

using namespace HotkeyModifiers;
using namespace std::chrono_literals;
using test::HotkeyTest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace key = test::key;
namespace mac = test::mac;

constexpr std::uint32_t controlOption = controlKey | optionKey;
constexpr int badAccess = 10;

using HotkeyGrabsTest = HotkeyTest;

TEST_F(HotkeyGrabsTest, DeliversAPressWithItsId) {
  EXPECT_EQ(add(1, mac::r, controlOption).status, 0);
  EXPECT_EQ(add(2, mac::r, controlOption | shiftKey).status, 0);
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  keyboard_.type({key::leftControl, key::leftAlt, key::leftShift, key::r});
  EXPECT_THAT(presses(), ElementsAre(1, 2));
}

TEST_F(HotkeyGrabsTest, KnowsEscapeAndEveryModifier) {
  EXPECT_EQ(add(1, mac::escape, controlKey).status, 0);
  EXPECT_EQ(add(2, mac::escape, optionKey | shiftKey).status, 0);
  EXPECT_EQ(add(3, mac::escape, cmdKey).status, 0);
  keyboard_.type({key::leftControl, key::escape});
  keyboard_.type({key::leftAlt, key::leftShift, key::escape});
  keyboard_.type({key::leftSuper, key::escape});
  keyboard_.type({key::escape});
  EXPECT_THAT(presses(), ElementsAre(1, 2, 3));
}

TEST_F(HotkeyGrabsTest, RefusesAKeyOrModifierThatItDoesNotKnow) {
  EXPECT_EQ(add(1, 0, controlOption).status, -1);
  EXPECT_EQ(add(1, mac::r, 0x10000).status, -1);
  EXPECT_EQ(add(1, mac::r, 0x10000).ref, nullptr);
}

TEST_F(HotkeyGrabsTest, DoesNotMindCapsLockAndNumLock) {
  add(1, mac::r, controlOption);
  keyboard_.type({key::capsLock});
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  keyboard_.type({key::numLock});
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  keyboard_.type({key::capsLock});
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  keyboard_.type({key::numLock});
  EXPECT_THAT(presses(), ElementsAre(1, 1, 1));
}

TEST_F(HotkeyGrabsTest, CallsOnceForAKeyThatIsHeld) {
  add(1, mac::r, controlOption);
  keyboard_.press(key::leftControl);
  keyboard_.press(key::leftAlt);
  keyboard_.press(key::r);
  eventually([] { return false; }, 2000);  // The key repeats meanwhile.
  keyboard_.release(key::r);
  EXPECT_THAT(pressed_, ElementsAre(1));
  keyboard_.type({key::r});
  keyboard_.release(key::leftAlt);
  keyboard_.release(key::leftControl);
  EXPECT_THAT(presses(), ElementsAre(1, 1));
}

TEST_F(HotkeyGrabsTest, CallsOnceForAKeyThatIsHeldWhileTheProgramIsBusy) {
  add(1, mac::r, controlOption);
  keyboard_.press(key::leftControl);
  keyboard_.press(key::leftAlt);
  keyboard_.press(key::r);
  std::this_thread::sleep_for(1s);
  keyboard_.release(key::r);
  keyboard_.press(key::r);
  std::this_thread::sleep_for(1s);
  keyboard_.release(key::r);
  keyboard_.release(key::leftAlt);
  keyboard_.release(key::leftControl);
  EXPECT_THAT(presses(), ElementsAre(1, 1));
}

TEST_F(HotkeyGrabsTest, ReleasingAShortcutKeyDeliversNothing) {
  add(1, mac::r, controlOption);
  keyboard_.press(key::leftControl);
  keyboard_.press(key::leftAlt);
  keyboard_.press(key::r);
  ASSERT_TRUE(eventually([this] { return pressed_.size() == 1; }));
  for (const auto down : {key::r, key::leftAlt, key::leftControl}) keyboard_.release(down);
  EXPECT_THAT(presses(), ElementsAre(1));
}

TEST_F(HotkeyGrabsTest, CallsForEachOfTwoQuickPresses) {
  add(1, mac::r, controlOption);
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  EXPECT_TRUE(eventually([this] { return pressed_.size() == 2; }));
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  EXPECT_TRUE(eventually([this] { return pressed_.size() == 3; }));
  EXPECT_THAT(presses(), ElementsAre(1, 1, 1));
}

TEST_F(HotkeyGrabsTest, AddingShiftWhileTheKeyIsHeldIsNoPress) {
  add(1, mac::r, controlOption);
  add(2, mac::r, controlOption | shiftKey);
  keyboard_.press(key::leftControl);
  keyboard_.press(key::leftAlt);
  keyboard_.press(key::r);
  EXPECT_TRUE(eventually([this] { return pressed_.size() == 1; }));
  keyboard_.press(key::leftShift);
  eventually([] { return false; }, 1000);  // The key repeats meanwhile.
  for (const auto down : {key::r, key::leftShift, key::leftAlt, key::leftControl})
    keyboard_.release(down);
  EXPECT_THAT(presses(), ElementsAre(1));
}

TEST_F(HotkeyGrabsTest, RefusesWhatAnotherClientGrabbed) {
  ASSERT_TRUE(keyboard_.grab(key::r, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1));
  const auto refused = add(1, mac::r, controlOption);
  EXPECT_EQ(refused.status, badAccess);
  EXPECT_EQ(refused.ref, nullptr);
  EXPECT_FALSE(refused.reason.isEmpty());
  EXPECT_EQ(add(1, mac::r, controlOption | shiftKey).status, 0);
  keyboard_.type({key::leftControl, key::leftAlt, key::leftShift, key::r});
  EXPECT_THAT(presses(), ElementsAre(1));
  keyboard_.ungrab(key::r, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
  EXPECT_EQ(add(2, mac::r, controlOption).status, 0);
}

TEST_F(HotkeyGrabsTest, RefusesWhatAnotherClientGrabbedByXInput2) {
  const std::uint32_t mask = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
  ASSERT_TRUE(keyboard_.grabByXInput2(key::r, mask));
  const auto refused = add(1, mac::r, controlOption);
  EXPECT_EQ(refused.status, badAccess);
  EXPECT_EQ(refused.ref, nullptr);
  EXPECT_FALSE(refused.reason.isEmpty());
  keyboard_.ungrabByXInput2(key::r, mask);
  EXPECT_EQ(add(1, mac::r, controlOption).status, 0);
}

TEST_F(HotkeyGrabsTest, KeepsNothingOfARefusedCombination) {
  // The other client has one of the lock states only.
  const std::uint16_t mask = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
  ASSERT_TRUE(keyboard_.grab(key::r, mask | XCB_MOD_MASK_LOCK));
  EXPECT_EQ(add(1, mac::r, controlOption).status, badAccess);
  EXPECT_TRUE(eventually([&] { return keyboard_.grab(key::r, mask); }));
  EXPECT_TRUE(eventually([&] { return keyboard_.grabByXInput2(key::r, mask); }));
}

TEST_F(HotkeyGrabsTest, LetsOthersUseXInput2AfterItsProbe) {
  EXPECT_EQ(add(1, mac::r, controlOption).status, 0);
  EXPECT_TRUE(eventually(
      [this] { return keyboard_.grabByXInput2(key::r, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1); }));
}

TEST_F(HotkeyGrabsTest, RefusesACombinationThatItHoldsAlready) {
  add(1, mac::r, controlOption);
  const auto second = add(2, mac::r, controlOption);
  EXPECT_EQ(second.state, HotkeyState::refused);
  EXPECT_EQ(second.ref, nullptr);
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  EXPECT_THAT(presses(), ElementsAre(1));
}

struct Lines final : SystemLog {
  void write(const QString& line) override { lines.push_back(line); }
  std::vector<QString> lines;
};

// As of a preset that contains Shift: then its pause shortcut is its speak shortcut.
TEST_F(HotkeyGrabsTest, OneCombinationForTwoCommandsRunsTheFirstAndTheCenterKnowsThatOneIsRefused) {
  desktop::QtMainQueue queue;
  Lines log;
  HotkeyCenter center(*service_, queue, log);
  std::vector<std::string> ran;
  EXPECT_TRUE(center.registerHotkey(mac::r, controlOption, [&] { ran.emplace_back("speak"); }));
  EXPECT_FALSE(center.registerHotkey(mac::r, controlOption, [&] { ran.emplace_back("pause"); }));
  EXPECT_FALSE(center.allActive());
  EXPECT_THAT(log.lines, SizeIs(testing::Ge(1)));
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  EXPECT_TRUE(eventually([&] { return !ran.empty(); }));
  EXPECT_THAT(ran, ElementsAre("speak"));

  center.unregisterAll();
  EXPECT_TRUE(center.registerHotkey(mac::r, controlOption, [&] { ran.emplace_back("anew"); }));
  EXPECT_TRUE(center.allActive());
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  EXPECT_TRUE(eventually([&] { return ran.size() > 1; }));
  EXPECT_THAT(ran, ElementsAre("speak", "anew"));
}

TEST_F(HotkeyGrabsTest, ChangedShortcutsAreDeadAndAliveAtOnce) {
  const auto old = add(1, mac::r, controlOption);
  service_->unregisterEventHotKey(old.ref);
  add(2, mac::escape, controlKey);
  EXPECT_TRUE(keyboard_.grab(key::r, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1));
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  keyboard_.type({key::leftControl, key::escape});
  EXPECT_THAT(presses(), ElementsAre(2));
}

TEST_F(HotkeyGrabsTest, APressOfAReleasedRegistrationCallsNothing) {
  const auto old = add(1, mac::r, controlOption);
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  service_->unregisterEventHotKey(old.ref);
  service_->unregisterEventHotKey(old.ref);
  EXPECT_THAT(presses(), IsEmpty());
}

// Each layout has another letter on the key in the ANSI "R" position, or R on another key.
class HotkeyLayoutTest : public HotkeyTest {
 protected:
  static void setLayout(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(QStringLiteral("setxkbmap"), arguments), 0);
  }
  void TearDown() override {
    setLayout({QStringLiteral("-option"), QString()});
    setLayout({QStringLiteral("us")});
  }
};

TEST_F(HotkeyLayoutTest, ThePhysicalKeyStaysWhenTheLayoutIsSwitched) {
  add(1, mac::r, controlOption);
  std::vector<std::uint32_t> expected;
  for (const auto* layout : {"de", "fr", "us(dvorak)", "ru", "us"}) {
    setLayout({QLatin1String(layout)});
    keyboard_.type({key::leftControl, key::leftAlt, key::r});
    expected.push_back(1);
    EXPECT_EQ(presses(), expected) << layout;
  }
}

TEST_F(HotkeyLayoutTest, EscapeIsWhereTheKeyboardHasIt) {
  add(1, mac::escape, controlKey);
  setLayout({QStringLiteral("-option"), QStringLiteral("caps:swapescape")});
  EXPECT_THAT(presses(), IsEmpty());  // The change has been seen.
  keyboard_.type({key::leftControl, key::escape});
  EXPECT_THAT(presses(), IsEmpty());
  keyboard_.type({key::leftControl, key::capsLock});
  EXPECT_THAT(presses(), ElementsAre(1));
  setLayout({QStringLiteral("-option"), QString()});
  EXPECT_THAT(presses(), ElementsAre(1));
  keyboard_.type({key::leftControl, key::escape});
  EXPECT_THAT(presses(), ElementsAre(1, 1));
}

TEST_F(HotkeyLayoutTest, AKeyThatAnotherProgramHasAfterTheSwitchIsToldAndSoIsItsReturn) {
  std::vector<HotkeyRegistration> answers;
  service_->installAnswerHandler(
      [&answers](const HotkeyRegistration& answer) { answers.push_back(answer); });
  const auto escape = add(1, mac::escape, controlKey);
  ASSERT_EQ(escape.status, 0);
  add(2, mac::r, controlOption);
  ASSERT_TRUE(keyboard_.grab(key::capsLock, XCB_MOD_MASK_CONTROL));
  setLayout({QStringLiteral("-option"), QStringLiteral("caps:swapescape")});
  ASSERT_TRUE(eventually([&] { return answers.size() == 1; }));
  EXPECT_EQ(answers[0].ref, escape.ref);
  EXPECT_EQ(answers[0].status, badAccess);
  EXPECT_FALSE(answers[0].reason.isEmpty());
  keyboard_.type({key::leftControl, key::leftAlt, key::r});
  EXPECT_THAT(presses(), ElementsAre(2)) << "the other one is not lost";
  keyboard_.ungrab(key::capsLock, XCB_MOD_MASK_CONTROL);
  setLayout({QStringLiteral("-option"), QString()});
  ASSERT_TRUE(eventually([&] { return answers.size() == 2; }));
  EXPECT_EQ(answers[1].ref, escape.ref);
  EXPECT_EQ(answers[1].status, 0);
  keyboard_.type({key::leftControl, key::escape});
  EXPECT_THAT(presses(), ElementsAre(2, 1));
}

// A window of another program that has the keyboard.
class HotkeyFocusTest : public HotkeyTest {
 protected:
  HotkeyFocusTest() : window_(xcb_generate_id(c_)) {
    const std::uint32_t values[] = {
        1, XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_EXPOSURE};
    xcb_create_window(c_, XCB_COPY_FROM_PARENT, window_, keyboard_.connection().root(), 0, 0, 50,
                      50, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(c_, window_);
    nextOf(XCB_EXPOSE);
    xcb_set_input_focus(c_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    nextOf(XCB_FOCUS_IN);
  }
  ~HotkeyFocusTest() override { xcb_destroy_window(c_, window_); }

  // The next event of that type at the window, while the program under test runs.
  Reply<xcb_generic_event_t> nextOf(int type) {
    Reply<xcb_generic_event_t> event;
    xcb_flush(c_);
    const bool came = eventually([&] {
      event.reset(xcb_poll_for_event(c_));
      return event && (event->response_type & 0x7f) == type;
    });
    return came ? std::move(event) : nullptr;
  }

  xcb_connection_t* c_ = keyboard_.connection().get();
  xcb_window_t window_;
};

TEST_F(HotkeyFocusTest, GivesTheKeyboardBackWhileTheKeyIsStillDown) {
  add(1, mac::r, controlOption);
  keyboard_.press(key::leftControl);
  keyboard_.press(key::leftAlt);
  keyboard_.press(key::r);
  const auto out = nextOf(XCB_FOCUS_OUT);
  const auto in = nextOf(XCB_FOCUS_IN);
  ASSERT_TRUE(out && in);
  EXPECT_EQ(reinterpret_cast<const xcb_focus_out_event_t&>(*out).mode, XCB_NOTIFY_MODE_GRAB);
  EXPECT_EQ(reinterpret_cast<const xcb_focus_in_event_t&>(*in).mode, XCB_NOTIFY_MODE_UNGRAB);
  keyboard_.type({key::t});
  const auto typed = nextOf(XCB_KEY_PRESS);
  ASSERT_TRUE(typed);
  EXPECT_EQ(reinterpret_cast<const xcb_key_press_event_t&>(*typed).detail, key::t);
  const Reply<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(c_, xcb_get_input_focus(c_), nullptr));
  EXPECT_EQ(focus->focus, window_);
}

}  // namespace
}  // namespace tavin::x11
