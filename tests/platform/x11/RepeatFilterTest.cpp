#include <gtest/gtest.h>
#include <xcb/xinput.h>

#include "platform/x11/Connection.h"
#include "platform/x11/RepeatFilter.h"

namespace tavin::x11 {
namespace {

constexpr xcb_keycode_t key = 27;

class RepeatFilterTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(keys_.prepare()); }

  void observeRaw(std::uint16_t type) {
    union {
      xcb_generic_event_t any;
      xcb_input_raw_key_press_event_t raw;
    } event = {};
    event.raw.response_type = XCB_GE_GENERIC;
    event.raw.extension = xcb_get_extension_data(connection_->get(), &xcb_input_id)->major_opcode;
    event.raw.event_type = type;
    event.raw.detail = key;
    keys_.observe(event.any);
  }

  std::unique_ptr<Connection> connection_ = Connection::open();
  RepeatFilter keys_{*connection_};
};

TEST_F(RepeatFilterTest, ARepeatIsNoPress) {
  EXPECT_TRUE(keys_.press(key));
  EXPECT_FALSE(keys_.press(key));
  EXPECT_TRUE(keys_.press(key + 1));
}

TEST_F(RepeatFilterTest, ARawReleaseEndsThePress) {
  keys_.press(key);
  observeRaw(XCB_INPUT_RAW_KEY_RELEASE);
  EXPECT_TRUE(keys_.press(key));
}

TEST_F(RepeatFilterTest, APressAfterAMissedReleaseCounts) {
  keys_.press(key);
  observeRaw(XCB_INPUT_RAW_KEY_PRESS);
  EXPECT_TRUE(keys_.press(key));
}

}  // namespace
}  // namespace tavin::x11
