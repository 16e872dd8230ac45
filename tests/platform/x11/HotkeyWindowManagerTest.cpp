// Runs under a window manager that holds Alt+Escape.

#include <gmock/gmock.h>

#include "platform/x11/HotkeyTest.h"

namespace tavin::x11 {
namespace {

namespace key = test::key;
namespace mac = test::mac;

class HotkeyWindowManagerTest : public test::HotkeyTest {
 protected:
  // A window that the manager shows: it has taken its keys before it looks at windows.
  void SetUp() override {
    xcb_connection_t* c = keyboard_.connection().get();
    const xcb_window_t window = xcb_generate_id(c);
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, keyboard_.connection().root(), 0, 0, 50, 50,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    ASSERT_TRUE(eventually([c, window] {
      xcb_map_window(c, window);  // While it starts, openbox loses what it is asked.
      xcb_flush(c);
      const Reply<xcb_generic_event_t> event(xcb_poll_for_event(c));
      return event && (event->response_type & 0x7f) == XCB_MAP_NOTIFY;
    }));
  }
};

TEST_F(HotkeyWindowManagerTest, RefusesItsCombinationAndGrantsTheOtherOne) {
  const auto speak = add(1, mac::escape, HotkeyModifiers::optionKey);
  EXPECT_EQ(speak.status, 10);
  EXPECT_EQ(speak.ref, nullptr);
  const auto pause = add(1, mac::escape, HotkeyModifiers::optionKey | HotkeyModifiers::shiftKey);
  EXPECT_EQ(pause.status, 0);
  keyboard_.type({key::leftAlt, key::leftShift, key::escape});
  EXPECT_THAT(presses(), testing::ElementsAre(1));
}

}  // namespace
}  // namespace tavin::x11
