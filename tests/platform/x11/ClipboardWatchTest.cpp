#include <gtest/gtest.h>
#include <xcb/xtest.h>

#include <atomic>
#include <thread>

#include "platform/Eventually.h"
#include "platform/x11/ClipboardServer.h"
#include "platform/x11/TestKeyboard.h"
#include "platform/x11/TestWindow.h"

namespace tavin::x11 {
namespace {

constexpr std::uint8_t leftButton = 1;
constexpr std::uint8_t wheelUp = 4;

class ClipboardWatchTest : public testing::Test {
 protected:
  void SetUp() override {
    test::activate(user_.connection(), target_.id());
    begin();
  }
  void begin() {
    told_ = 0;
    server_->beginWatch([this] { ++told_; });
  }
  copy::ClipboardChange afterCopyBy(test::TestWindow& program) {
    EXPECT_TRUE(program.command("clipboard text"));
    EXPECT_TRUE(eventually([this] { return told_ > 0; }));
    const auto changes = server_->takeChanges();
    EXPECT_EQ(changes.size(), 1U);
    return changes.empty() ? copy::ClipboardChange() : changes.back();
  }
  bool userActedBeforeCopy() { return afterCopyBy(target_).input.first().has_value(); }
  void turn(std::uint8_t button) {
    for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
      xcb_test_fake_input(user_.connection().get(), static_cast<std::uint8_t>(type), button,
                          XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    user_.sync();
  }

  std::atomic<int> told_ = 0;
  test::TestKeyboard user_;
  test::TestWindow target_{"editor"};
  test::TestWindow other_{"manager"};
  std::unique_ptr<ClipboardServer> server_ = ClipboardServer::create();
};

TEST_F(ClipboardWatchTest, KnowsTheProgramThatHadTheKeyboard) {
  EXPECT_TRUE(server_->takeChanges().empty());
  const auto change = afterCopyBy(target_);
  EXPECT_TRUE(change.fromTarget);
  EXPECT_FALSE(change.input.first());
  EXPECT_TRUE(server_->takeChanges().empty()) << "each is told once";
}

TEST_F(ClipboardWatchTest, KnowsAnotherProgramEvenInFront) {
  test::activate(user_.connection(), other_.id());
  EXPECT_FALSE(afterCopyBy(other_).fromTarget);
}

TEST_F(ClipboardWatchTest, EachChangeTellsWhose) {
  EXPECT_TRUE(other_.command("clipboard text"));
  EXPECT_TRUE(target_.command("clipboard text"));
  EXPECT_TRUE(eventually([this] { return told_ == 2; }));
  const auto changes = server_->takeChanges();
  ASSERT_EQ(changes.size(), 2U);
  EXPECT_FALSE(changes.front().fromTarget);
  EXPECT_TRUE(changes.back().fromTarget);
}

TEST_F(ClipboardWatchTest, OurOwnChangesAreNone) {
  server_->serve({});
  server_->clear();
  server_->changeCount();
  EXPECT_TRUE(server_->takeChanges().empty());
  EXPECT_TRUE(afterCopyBy(target_).fromTarget);
}

TEST_F(ClipboardWatchTest, WhatAnotherProgramClearsIsAChange) {
  EXPECT_TRUE(afterCopyBy(target_).fromTarget);
  const auto connection = Connection::open();
  xcb_set_selection_owner(connection->get(), XCB_WINDOW_NONE, connection->atom("CLIPBOARD"),
                          XCB_CURRENT_TIME);
  connection->roundTrip();
  const auto changes = server_->takeChanges();
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_FALSE(changes.back().fromTarget);
}

TEST_F(ClipboardWatchTest, AKeyOrAButtonIsTheUsersDoing) {
  user_.type({test::key::t});
  EXPECT_TRUE(userActedBeforeCopy());
  begin();
  EXPECT_FALSE(userActedBeforeCopy()) << "that was before";
  begin();
  turn(leftButton);
  EXPECT_TRUE(userActedBeforeCopy());
}

TEST_F(ClipboardWatchTest, TheKeysOfOurShortcutsAreNot) {
  user_.type({test::key::leftAlt, test::key::escape});
  user_.type({test::key::leftControl, test::key::leftAlt, test::key::r});
  EXPECT_FALSE(userActedBeforeCopy());
}

// A key binding of the user's own.
TEST_F(ClipboardWatchTest, AShortcutThatArrivesExplainsItsKeys) {
  user_.type({test::key::leftAlt, test::key::t});
  EXPECT_TRUE(target_.command("clipboard text"));
  server_->shortcutArrived(copy::UserInput::Clock::now());
  EXPECT_FALSE(server_->takeChanges().back().input.first()) << "nor of what was told already";
  EXPECT_FALSE(userActedBeforeCopy());
}

TEST_F(ClipboardWatchTest, AShortcutExplainsNoLaterKey) {
  user_.type({test::key::leftAlt, test::key::t});
  const auto arrival = copy::UserInput::Clock::now();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  user_.type({test::key::t});
  server_->shortcutArrived(arrival);
  EXPECT_TRUE(userActedBeforeCopy());
}

TEST_F(ClipboardWatchTest, KeysAreTimedByTheDisplay) {
  const auto before = copy::UserInput::Clock::now();
  user_.type({test::key::t});
  const auto after = copy::UserInput::Clock::now();
  const auto input = afterCopyBy(target_).input;
  ASSERT_TRUE(input.first());
  EXPECT_GT(*input.first(), before - std::chrono::milliseconds(500));
  EXPECT_LE(*input.first(), after);
}

TEST_F(ClipboardWatchTest, NeitherTheWheelNorAModifierNorAKeyThatIsLetGoOfIs) {
  user_.press(test::key::t);
  begin();
  user_.release(test::key::t);
  user_.type({test::key::leftAlt});
  turn(wheelUp);
  EXPECT_FALSE(userActedBeforeCopy());
}

TEST_F(ClipboardWatchTest, NothingIsToldAfterItsEnd) {
  server_->endWatch();
  EXPECT_TRUE(target_.command("clipboard text"));
  EXPECT_TRUE(server_->takeChanges().empty());
  EXPECT_EQ(told_, 0);
}

}  // namespace
}  // namespace tavin::x11
