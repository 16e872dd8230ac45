#include "platform/x11/DisplayWatch.h"

#include <xcb/xfixes.h>

#include <QTimer>
#include <string>
#include <utility>

namespace tavin::x11 {
namespace {

// Each screen of a display has a tray of its own.
std::string trayName(const Connection& connection) {
  int number = 0;
  for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
       screens.rem > 0 && screens.data != connection.screen(); xcb_screen_next(&screens))
    ++number;
  return "_NET_SYSTEM_TRAY_S" + std::to_string(number);
}

}  // namespace

std::unique_ptr<DisplayWatch> DisplayWatch::create(std::function<void()> ended) {
  auto connection = Connection::open();
  if (!connection)
    return nullptr;
  return std::unique_ptr<DisplayWatch>(new DisplayWatch(std::move(connection), std::move(ended)));
}

DisplayWatch::DisplayWatch(std::unique_ptr<Connection> connection, std::function<void()> ended)
    : connection_(std::move(connection)),
      ended_(std::move(ended)),
      tray_(connection_->atom(trayName(*connection_))),
      notices_(connection_->prepareSelectionNotices()),
      notifier_(xcb_get_file_descriptor(connection_->get()), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { readEvents(); });
  if (notices_)
    connection_->tellOwners(tray_, connection_->root());
  hasTray_ = connection_->ownerOf(tray_) != XCB_WINDOW_NONE;
  // Events that came in with an answer wait in memory, where the notifier does not see them.
  QTimer::singleShot(0, &notifier_, [this] { readEvents(); });
}

void DisplayWatch::readEvents() {
  while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())})
    handle(*event);
  if (xcb_connection_has_error(connection_->get()) == 0)
    return;
  notifier_.setEnabled(false);  // A closed connection would be readable forever.
  ended_();
}

void DisplayWatch::handle(const xcb_generic_event_t& event) {
  if (!notices_ || (event.response_type & 0x7f) != *notices_ + XCB_XFIXES_SELECTION_NOTIFY)
    return;
  const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  const bool has = notice.owner != XCB_WINDOW_NONE;
  if (std::exchange(hasTray_, has) != has && trayChanged_)
    trayChanged_();
}

}  // namespace tavin::x11
