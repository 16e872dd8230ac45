#include <gtest/gtest.h>
#include <xcb/xtest.h>

#include <atomic>

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
  copy::ClipboardChanges afterCopyBy(test::TestWindow& program) {
    EXPECT_TRUE(program.command("clipboard text"));
    EXPECT_TRUE(eventually([this] { return told_ > 0; }));
    return server_->watched();
  }
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
  EXPECT_EQ(server_->watched().count, 0);
  const auto changes = afterCopyBy(target_);
  EXPECT_EQ(changes.count, 1);
  EXPECT_TRUE(changes.fromTarget);
  EXPECT_FALSE(changes.userActed);
}

TEST_F(ClipboardWatchTest, KnowsAnotherProgramEvenInFront) {
  test::activate(user_.connection(), other_.id());
  EXPECT_FALSE(afterCopyBy(other_).fromTarget);
}

TEST_F(ClipboardWatchTest, TheFirstChangeTellsWhose) {
  EXPECT_FALSE(afterCopyBy(other_).fromTarget);
  const auto both = afterCopyBy(target_);
  EXPECT_EQ(both.count, 2);
  EXPECT_FALSE(both.fromTarget);
}

TEST_F(ClipboardWatchTest, AKeyOrAButtonIsTheUsersDoing) {
  user_.type({test::key::t});
  EXPECT_TRUE(afterCopyBy(target_).userActed);
  begin();
  EXPECT_FALSE(afterCopyBy(target_).userActed) << "that was before";
  begin();
  turn(leftButton);
  EXPECT_TRUE(afterCopyBy(target_).userActed);
}

TEST_F(ClipboardWatchTest, NeitherTheWheelNorAKeyThatIsLetGoOfIs) {
  user_.press(test::key::leftAlt);
  begin();
  user_.release(test::key::leftAlt);
  turn(wheelUp);
  EXPECT_FALSE(afterCopyBy(target_).userActed);
}

TEST_F(ClipboardWatchTest, NothingIsToldAfterItsEnd) {
  server_->endWatch();
  EXPECT_TRUE(target_.command("clipboard text"));
  EXPECT_EQ(server_->watched().count, 0);
  EXPECT_EQ(told_, 0);
}

}  // namespace
}  // namespace tavin::x11
