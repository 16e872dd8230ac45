#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <set>

#include "platform/x11/Connection.h"

namespace tavin::test {

// X key codes of an ANSI keyboard.
namespace key {
inline constexpr xcb_keycode_t escape = 9;
inline constexpr xcb_keycode_t r = 27;
inline constexpr xcb_keycode_t t = 28;
inline constexpr xcb_keycode_t leftControl = 37;
inline constexpr xcb_keycode_t leftShift = 50;
inline constexpr xcb_keycode_t leftAlt = 64;
inline constexpr xcb_keycode_t capsLock = 66;
inline constexpr xcb_keycode_t numLock = 77;
inline constexpr xcb_keycode_t leftSuper = 133;
}  // namespace key

// A second client of the display that types and grabs keys. When a call returns, the display has
// done it. What is still down at the end comes up.
class TestKeyboard {
 public:
  TestKeyboard();
  ~TestKeyboard();
  TestKeyboard(const TestKeyboard&) = delete;
  TestKeyboard& operator=(const TestKeyboard&) = delete;

  void press(xcb_keycode_t key);
  void release(xcb_keycode_t key);
  // Presses them in order and releases them in the opposite one.
  void type(std::initializer_list<xcb_keycode_t> keys);

  // True where the display granted it.
  bool grab(xcb_keycode_t key, std::uint16_t mask);
  void ungrab(xcb_keycode_t key, std::uint16_t mask);
  bool grabByXInput2(xcb_keycode_t key, std::uint32_t mask);
  void ungrabByXInput2(xcb_keycode_t key, std::uint32_t mask);

  x11::Connection& connection() { return *connection_; }
  void sync();

 private:
  void fake(std::uint8_t type, xcb_keycode_t key);

  std::unique_ptr<x11::Connection> connection_;
  std::set<xcb_keycode_t> down_;
};

}  // namespace tavin::test
