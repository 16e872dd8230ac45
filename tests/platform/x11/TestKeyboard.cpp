#include "platform/x11/TestKeyboard.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace tavin::test {

TestKeyboard::TestKeyboard() : connection_(x11::Connection::open()) {
  // Announced as XInput 2, or its grabs are errors.
  const auto cookie = xcb_input_xi_query_version(connection_->get(), 2, 2);
  const x11::Reply<xcb_input_xi_query_version_reply_t> reply(
      xcb_input_xi_query_version_reply(connection_->get(), cookie, nullptr));
}

TestKeyboard::~TestKeyboard() {
  for (const xcb_keycode_t key : std::set(down_)) release(key);
}

void TestKeyboard::press(xcb_keycode_t key) {
  down_.insert(key);
  fake(XCB_KEY_PRESS, key);
}

void TestKeyboard::release(xcb_keycode_t key) {
  down_.erase(key);
  fake(XCB_KEY_RELEASE, key);
}

void TestKeyboard::type(std::initializer_list<xcb_keycode_t> keys) {
  for (const xcb_keycode_t key : keys) press(key);
  std::for_each(std::rbegin(keys), std::rend(keys), [this](xcb_keycode_t key) { release(key); });
}

void TestKeyboard::fake(std::uint8_t type, xcb_keycode_t key) {
  xcb_test_fake_input(connection_->get(), type, key, XCB_CURRENT_TIME, connection_->root(), 0, 0,
                      0);
  sync();
}

bool TestKeyboard::grab(xcb_keycode_t key, std::uint16_t mask) {
  const auto cookie = xcb_grab_key_checked(connection_->get(), 0, connection_->root(), mask, key,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const x11::Reply<xcb_generic_error_t> error(xcb_request_check(connection_->get(), cookie));
  return !error;
}

void TestKeyboard::ungrab(xcb_keycode_t key, std::uint16_t mask) {
  xcb_ungrab_key(connection_->get(), key, connection_->root(), mask);
  sync();
}

bool TestKeyboard::grabByXInput2(xcb_keycode_t key, std::uint32_t mask) {
  const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
  const auto cookie = xcb_input_xi_passive_grab_device(
      connection_->get(), XCB_CURRENT_TIME, connection_->root(), XCB_CURSOR_NONE, key,
      XCB_INPUT_DEVICE_ALL_MASTER, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
      XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &mask);
  const x11::Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
      xcb_input_xi_passive_grab_device_reply(connection_->get(), cookie, nullptr));
  return reply && reply->num_modifiers == 0;
}

void TestKeyboard::ungrabByXInput2(xcb_keycode_t key, std::uint32_t mask) {
  xcb_input_xi_passive_ungrab_device(connection_->get(), connection_->root(), key,
                                     XCB_INPUT_DEVICE_ALL_MASTER, 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
                                     &mask);
  sync();
}

void TestKeyboard::sync() {
  const auto cookie = xcb_get_input_focus(connection_->get());
  const x11::Reply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_->get(), cookie, nullptr));
}

}  // namespace tavin::test
