#include "platform/x11/PrimaryWatch.h"

#include <poll.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {

std::unique_ptr<PrimaryWatch> PrimaryWatch::create() {
  auto connection = Connection::open();
  if (!connection)
    return nullptr;
  const auto notices = connection->prepareSelectionNotices();
  if (!notices)
    return nullptr;
  return std::unique_ptr<PrimaryWatch>(new PrimaryWatch(std::move(connection), *notices));
}

PrimaryWatch::PrimaryWatch(std::unique_ptr<Connection> connection, std::uint8_t fixesEvent)
    : connection_(std::move(connection)),
      fixesEvent_(fixesEvent),
      activeWindow_(*connection_),
      activeWindowAtom_(connection_->atom("_NET_ACTIVE_WINDOW")) {
  connection_->tellOwners(XCB_ATOM_PRIMARY, connection_->root());
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK, &mask);
  current_ = activeWindow_.find();
  thread_ = std::thread([this] { run(); });
}

PrimaryWatch::~PrimaryWatch() {
  inbox_.stop();
  thread_.join();
}

void PrimaryWatch::run() {
  xcb_connection_t* c = connection_->get();
  while (inbox_.run() && xcb_connection_has_error(c) == 0) {
    while (const Event event = nextEvent()) handle(*event);
    pollfd descriptors[] = {{xcb_get_file_descriptor(c), POLLIN, 0}, {inbox_.file(), POLLIN, 0}};
    poll(descriptors, 2, -1);
  }
}

PrimaryWatch::Event PrimaryWatch::nextEvent() {
  if (arrived_.empty())
    return Event(xcb_poll_for_event(connection_->get()));
  Event event = std::move(arrived_.front());
  arrived_.pop_front();
  return event;
}

bool PrimaryWatch::tellsActiveWindow(const xcb_generic_event_t& event) const {
  return (event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY &&
         reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == activeWindowAtom_;
}

void PrimaryWatch::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY)
    primaryChanged(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner);
  else if (tellsActiveWindow(event))
    activeWindowChanged();
}

void PrimaryWatch::primaryChanged(xcb_window_t owner) {
  const bool known = owner != XCB_WINDOW_NONE && current_ != XCB_WINDOW_NONE && !currentIsOld_;
  const std::int64_t process = known ? clientProcess(*connection_, owner) : 0;
  const bool sameProgram =
      known && (sameClient(*connection_, owner, current_) ||
                (process != 0 && process == clientProcess(*connection_, current_)));
  madeIn_ = sameProgram ? current_ : xcb_window_t{XCB_WINDOW_NONE};
}

void PrimaryWatch::activeWindowChanged() {
  const xcb_window_t active = activeWindow_.find();
  // What became active after this event is told by the answer, and by an event that came before it.
  while (Event event{xcb_poll_for_queued_event(connection_->get())})
    arrived_.push_back(std::move(event));
  currentIsOld_ = std::any_of(arrived_.begin(), arrived_.end(),
                              [this](const Event& event) { return tellsActiveWindow(*event); });
  if (currentIsOld_)
    return;
  // A menu that opens and closes takes the keyboard away for a moment, which changes no selection.
  if (active == current_ || active == XCB_WINDOW_NONE || activeWindow_.isPassing(active))
    return;
  current_ = active;
  madeIn_ = XCB_WINDOW_NONE;
}

}  // namespace tavin::x11
