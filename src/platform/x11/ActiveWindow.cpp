#include "platform/x11/ActiveWindow.h"

#include <algorithm>

#include "platform/posix/ProcessFolder.h"
#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {
namespace {

constexpr int deepestWindow = 64;

bool exists(const Connection& connection, xcb_window_t window) {
  xcb_connection_t* c = connection.get();
  xcb_generic_error_t* error = nullptr;
  const Reply<xcb_get_geometry_reply_t> reply(
      xcb_get_geometry_reply(c, xcb_get_geometry(c, window), &error));
  const Reply<xcb_generic_error_t> released(error);
  return reply != nullptr;
}

}  // namespace

ActiveWindow::ActiveWindow(const Connection& connection)
    : connection_(connection),
      probe_(connection.createHiddenWindow()),
      activeWindow_(connection.atom("_NET_ACTIVE_WINDOW")),
      managerWindow_(connection.atom("_NET_SUPPORTING_WM_CHECK")),
      windowType_(connection.atom("_NET_WM_WINDOW_TYPE")),
      passingTypes_{connection.atom("_NET_WM_WINDOW_TYPE_DOCK"),
                    connection.atom("_NET_WM_WINDOW_TYPE_MENU"),
                    connection.atom("_NET_WM_WINDOW_TYPE_POPUP_MENU"),
                    connection.atom("_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"),
                    connection.atom("_NET_WM_WINDOW_TYPE_NOTIFICATION")} {}

xcb_window_t ActiveWindow::find() const {
  const auto active = unitsProperty(connection_, connection_.root(), activeWindow_);
  if (active.empty())
    return focused();
  // Mutter names a window of its own while no X program has the keyboard.
  const auto manager = unitsProperty(connection_, connection_.root(), managerWindow_);
  const bool isManagers = !manager.empty() && sameClient(connection_, manager[0], active[0]);
  // A window manager that ended leaves its last word behind.
  return active[0] != XCB_WINDOW_NONE && !isManagers && exists(connection_, active[0])
             ? active[0]
             : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t ActiveWindow::inputFocus() const {
  xcb_connection_t* c = connection_.get();
  const Reply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_INPUT_FOCUS_NONE};
}

xcb_window_t ActiveWindow::focused() const {
  const xcb_window_t focus = inputFocus();
  const bool isWindow = focus > XCB_INPUT_FOCUS_POINTER_ROOT && focus != connection_.root();
  return isWindow ? setUpBy(focus) : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t ActiveWindow::setUpBy(xcb_window_t window) const {
  xcb_connection_t* c = connection_.get();
  for (int i = 0; i < deepestWindow && windowClass(connection_, window).empty(); ++i) {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(c, xcb_query_tree(c, window), nullptr));
    if (!tree || tree->parent == connection_.root() || tree->parent == XCB_WINDOW_NONE)
      break;
    window = tree->parent;
  }
  return window;
}

xcb_window_t ActiveWindow::keyTarget() const {
  xcb_window_t window = inputFocus();
  if (window == XCB_INPUT_FOCUS_NONE)
    return XCB_WINDOW_NONE;
  if (window == XCB_INPUT_FOCUS_POINTER_ROOT)
    window = connection_.root();
  for (int i = 0; i < deepestWindow; ++i) {
    const xcb_window_t child = childUnderPointer(window);
    if (child == XCB_WINDOW_NONE)
      break;
    window = child;
  }
  return window == connection_.root() ? xcb_window_t{XCB_WINDOW_NONE} : window;
}

xcb_window_t ActiveWindow::childUnderPointer(xcb_window_t window) const {
  xcb_connection_t* c = connection_.get();
  const Reply<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(c, xcb_query_pointer(c, window), nullptr));
  return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

bool ActiveWindow::isPassing(xcb_window_t window) const {
  const auto types = unitsProperty(connection_, window, windowType_);
  const bool passing = std::any_of(types.begin(), types.end(), [this](std::uint32_t type) {
    return std::find(std::begin(passingTypes_), std::end(passingTypes_), type) !=
           std::end(passingTypes_);
  });
  return passing || posix::showsOurWindows(clientProcess(connection_, window));
}

bool ActiveWindow::keyboardIsGrabbed() const {
  // A window that is not shown cannot grab, so this asks without doing anything.
  xcb_connection_t* c = connection_.get();
  const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
      c,
      xcb_grab_keyboard(c, 0, probe_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
      nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

}  // namespace tavin::x11
