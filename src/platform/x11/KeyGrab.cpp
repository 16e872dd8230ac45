#include "platform/x11/KeyGrab.h"

#include <xcb/xinput.h>

namespace tavin::x11 {
namespace {

std::vector<std::uint32_t> wide(const std::vector<std::uint16_t>& masks) {
  return {masks.begin(), masks.end()};
}

xcb_input_xi_passive_grab_device_cookie_t sendProbe(const Connection& connection,
                                                    const KeyGrab& grab) {
  const std::uint32_t events =
      XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
  const auto modifiers = wide(grab.masks);
  return xcb_input_xi_passive_grab_device(
      connection.get(), XCB_CURRENT_TIME, connection.root(), XCB_CURSOR_NONE, grab.keycode,
      XCB_INPUT_DEVICE_ALL_MASTER, static_cast<std::uint16_t>(modifiers.size()), 1,
      XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
      XCB_INPUT_GRAB_OWNER_OWNER, &events, modifiers.data());
}

void sendUnprobe(const Connection& connection, const KeyGrab& grab) {
  const auto modifiers = wide(grab.masks);
  xcb_input_xi_passive_ungrab_device(
      connection.get(), connection.root(), grab.keycode, XCB_INPUT_DEVICE_ALL_MASTER,
      static_cast<std::uint16_t>(modifiers.size()), XCB_INPUT_GRAB_TYPE_KEYCODE, modifiers.data());
}

// The first status that is no success, 0 when there is none.
std::int32_t probeStatus(const Connection& connection,
                         xcb_input_xi_passive_grab_device_cookie_t cookie) {
  xcb_generic_error_t* rawError = nullptr;
  const Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
      xcb_input_xi_passive_grab_device_reply(connection.get(), cookie, &rawError));
  const Reply<xcb_generic_error_t> error(rawError);
  if (error)
    return error->error_code;
  if (!reply)
    return -1;  // The connection is broken.
  auto failed = xcb_input_xi_passive_grab_device_modifiers_iterator(reply.get());
  return failed.rem > 0 ? failed.data->status : 0;
}

}  // namespace

std::optional<GrabRefusal> grabKey(const Connection& connection, const KeyGrab& grab) {
  xcb_connection_t* c = connection.get();
  std::vector<xcb_void_cookie_t> cookies;
  for (const std::uint16_t mask : grab.masks)
    cookies.push_back(xcb_grab_key_checked(c, 0, connection.root(), mask, grab.keycode,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  // An XInput 2 grab of another client takes the key before this one sees it, and does not show
  // in its success. Asking for one too, for the moment, tells.
  const auto probe = sendProbe(connection, grab);
  sendUnprobe(connection, grab);

  std::optional<GrabRefusal> refusal;
  for (const auto& cookie : cookies) {
    const Reply<xcb_generic_error_t> error(xcb_request_check(c, cookie));
    if (error && !refusal)
      refusal = {error->error_code, QStringLiteral("another program holds the combination")};
  }
  const std::int32_t status = probeStatus(connection, probe);
  if (status != 0 && !refusal)
    refusal = {status, QStringLiteral("the window manager or another program holds the "
                                      "combination through XInput 2")};
  if (refusal)
    ungrabKey(connection, grab);
  return refusal;
}

void ungrabKey(const Connection& connection, const KeyGrab& grab) {
  for (const std::uint16_t mask : grab.masks)
    xcb_ungrab_key(connection.get(), grab.keycode, connection.root(), mask);
  xcb_flush(connection.get());
}

}  // namespace tavin::x11
