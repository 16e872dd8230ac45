#include "platform/x11/Connection.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <string>

#include "platform/posix/SocketProbe.h"

namespace tavin::x11 {
namespace {

// Xwayland may have to be started first.
constexpr double secondsToOpen = 2;

// The beginning of a connection of version 11, least byte first, without a word of authority:
// whether the answer is yes or no does not matter.
constexpr std::string_view greeting{"l\0\13\0\0\0\0\0\0\0\0\0", 12};

// What is wanted of a window system and its clipboard. They are asked for together, because each
// alone would be one more wait for the display at start.
constexpr std::array<std::string_view, 24> usualAtoms{
    "ATOM_PAIR",
    "CLIPBOARD",
    "CLIPBOARD_MANAGER",
    "COMPOUND_TEXT",
    "INCR",
    "MULTIPLE",
    "NULL",
    "SAVE_TARGETS",
    "STRING",
    "TARGETS",
    "TEXT",
    "TIMESTAMP",
    "UTF8_STRING",
    "_NET_ACTIVE_WINDOW",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_TAVIN_CLIPBOARD",
    "_TAVIN_CLOCK",
    "_TAVIN_SELECTION",
};

xcb_intern_atom_cookie_t askAtom(xcb_connection_t* connection, std::string_view name) {
  return xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data());
}

xcb_atom_t answerTo(xcb_connection_t* connection, xcb_intern_atom_cookie_t asked) {
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, asked, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace

bool displayAnswers(Deadline deadline) {
  char* host = nullptr;
  int number = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &number, &screen) == 0)
    return false;
  const Reply<char> freed(host);
  if (const std::string_view name(host); !name.empty() && name != "unix")
    return true;
  const std::string path = "/tmp/.X11-unix/X" + std::to_string(number);
  return posix::socketAnswers(path, greeting, deadline) ||
         posix::socketAnswers('\0' + path, greeting, deadline);
}

std::unique_ptr<Connection> Connection::open() {
  // xcb would wait without end for a display that hangs.
  if (!displayAnswers(Deadline::in(secondsToOpen)))
    return nullptr;
  int preferred = 0;
  xcb_connection_t* connection = xcb_connect(nullptr, &preferred);
  if (xcb_connection_has_error(connection) == 0) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < preferred && screens.rem > 1; ++i) xcb_screen_next(&screens);
    if (screens.rem > 0)
      return std::unique_ptr<Connection>(new Connection(connection, screens.data));
  }
  xcb_disconnect(connection);
  return nullptr;
}

Connection::Connection(xcb_connection_t* connection, xcb_screen_t* screen)
    : connection_(connection), screen_(screen) {}

Connection::~Connection() { xcb_disconnect(connection_); }

xcb_atom_t Connection::atom(std::string_view name) const {
  const auto* const usual = std::find(usualAtoms.begin(), usualAtoms.end(), name);
  if (usual == usualAtoms.end())
    return answerTo(connection_, askAtom(connection_, name));
  if (usualAtoms_.empty())
    askUsualAtoms();
  return usualAtoms_[static_cast<std::size_t>(usual - usualAtoms.begin())];
}

void Connection::askUsualAtoms() const {
  std::array<xcb_intern_atom_cookie_t, usualAtoms.size()> asked{};
  std::transform(usualAtoms.begin(), usualAtoms.end(), asked.begin(),
                 [this](std::string_view name) { return askAtom(connection_, name); });
  for (const auto& cookie : asked) usualAtoms_.push_back(answerTo(connection_, cookie));
}

bool Connection::roundTrip() const {
  const auto cookie = xcb_get_input_focus(connection_);
  return Reply<xcb_get_input_focus_reply_t>(
             xcb_get_input_focus_reply(connection_, cookie, nullptr)) != nullptr;
}

const xcb_query_extension_reply_t* Connection::extension(xcb_extension_t& id) const {
  const xcb_query_extension_reply_t* found = xcb_get_extension_data(connection_, &id);
  return found != nullptr && found->present != 0 ? found : nullptr;
}

xcb_window_t Connection::createHiddenWindow(std::uint32_t events) const {
  const xcb_window_t window = xcb_generate_id(connection_);
  xcb_create_window(connection_, 0, window, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

xcb_window_t Connection::ownerOf(xcb_atom_t selection) const {
  const auto cookie = xcb_get_selection_owner(connection_, selection);
  const Reply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_, cookie, nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::optional<std::uint8_t> Connection::prepareSelectionNotices() const {
  const auto* fixes = extension(xcb_xfixes_id);
  if (fixes == nullptr)
    return std::nullopt;
  // The display wants to be told a version; its answer is of no use, as all have these notices.
  xcb_discard_reply(connection_, xcb_xfixes_query_version(connection_, 5, 0).sequence);
  return fixes->first_event;
}

void Connection::tellOwners(xcb_atom_t selection, xcb_window_t window, bool tell) const {
  constexpr std::uint32_t changes = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  xcb_xfixes_select_selection_input(connection_, window, selection, tell ? changes : 0);
}

}  // namespace tavin::x11
