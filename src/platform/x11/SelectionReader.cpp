#include "platform/x11/SelectionReader.h"

#include <poll.h>
#include <xcb/xfixes.h>

namespace tavin::x11 {
namespace {

// No honest owner offers more; a hostile one shall not fill the memory.
constexpr qsizetype largestConversion = 512 << 20;

// A window for one conversion: what an owner sends too late finds it gone and confuses nothing.
class ConversionWindow {
 public:
  explicit ConversionWindow(const Connection& connection)
      : connection_(connection.get()),
        id_(connection.createHiddenWindow(XCB_EVENT_MASK_PROPERTY_CHANGE)) {}
  ~ConversionWindow() {
    xcb_destroy_window(connection_, id_);
    xcb_flush(connection_);
  }
  ConversionWindow(const ConversionWindow&) = delete;
  ConversionWindow& operator=(const ConversionWindow&) = delete;
  xcb_window_t id() const { return id_; }

 private:
  xcb_connection_t* connection_;
  xcb_window_t id_;
};

template <typename Event>
const Event& as(const Reply<xcb_generic_event_t>& event) {
  return *reinterpret_cast<const Event*>(event.get());
}

std::uint8_t kind(const Reply<xcb_generic_event_t>& event) { return event->response_type & 0x7f; }

}  // namespace

std::unique_ptr<SelectionReader> SelectionReader::create() {
  auto connection = Connection::open();
  if (!connection)
    return nullptr;
  const auto notices = connection->prepareSelectionNotices();
  if (!notices)
    return nullptr;
  return std::unique_ptr<SelectionReader>(new SelectionReader(std::move(connection), *notices));
}

SelectionReader::SelectionReader(std::unique_ptr<Connection> connection, std::uint8_t fixesEvent)
    : connection_(std::move(connection)),
      fixesEvent_(fixesEvent),
      property_(connection_->atom("_TAVIN_SELECTION")),
      incr_(connection_->atom("INCR")) {}

SelectionReader::~SelectionReader() = default;

std::vector<std::string> SelectionReader::atomNames(const std::vector<xcb_atom_t>& atoms) {
  xcb_connection_t* c = connection_->get();
  std::vector<xcb_get_atom_name_cookie_t> cookies;
  for (const auto atom : atoms) cookies.push_back(xcb_get_atom_name(c, atom));
  std::vector<std::string> names;
  for (const auto cookie : cookies) {
    xcb_generic_error_t* error = nullptr;
    const Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(c, cookie, &error));
    const Reply<xcb_generic_error_t> released(error);
    names.emplace_back();
    if (reply)
      names.back().assign(xcb_get_atom_name_name(reply.get()),
                          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
  }
  return names;
}

Conversion SelectionReader::convert(xcb_atom_t selection, xcb_atom_t target, Deadline deadline,
                                    Deadline begin) {
  const ConversionWindow window(*connection_);
  xcb_convert_selection(connection_->get(), window.id(), selection, target, property_,
                        XCB_CURRENT_TIME);
  while (const auto event = nextEvent(begin)) {
    if (kind(event) != XCB_SELECTION_NOTIFY)
      continue;
    const auto& answer = as<xcb_selection_notify_event_t>(event);
    if (answer.requestor != window.id())
      continue;
    if (answer.property == XCB_ATOM_NONE)
      return {Conversion::Outcome::refused, XCB_ATOM_NONE, 8, {}};
    Conversion result = takeProperty(window.id());
    return result.type == incr_ ? readIncrementally(window.id(), deadline, begin) : result;
  }
  return failure();
}

Conversion SelectionReader::takeProperty(xcb_window_t window) {
  xcb_connection_t* c = connection_->get();
  constexpr std::uint32_t everything = 0x1fffffff;
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      c, xcb_get_property(c, 1, window, property_, XCB_GET_PROPERTY_TYPE_ANY, 0, everything),
      nullptr));
  // An owner that announces data and leaves none has refused.
  if (!reply || reply->type == XCB_ATOM_NONE)
    return {Conversion::Outcome::refused, XCB_ATOM_NONE, 8, {}};
  return {Conversion::Outcome::converted, reply->type, reply->format,
          QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                     xcb_get_property_value_length(reply.get()))};
}

Conversion SelectionReader::readIncrementally(xcb_window_t window, Deadline deadline,
                                              Deadline begin) {
  Conversion whole;
  whole.outcome = Conversion::Outcome::converted;
  while (waitForProperty(window, whole.bytes.isEmpty() ? begin : deadline)) {
    Conversion piece = takeProperty(window);
    if (piece.outcome != Conversion::Outcome::converted)
      return piece;
    // Given back as that type they would announce pieces that never come.
    if (piece.type == incr_)
      return {Conversion::Outcome::refused, XCB_ATOM_NONE, 8, {}};
    if (whole.type == XCB_ATOM_NONE) {
      whole.type = piece.type;
      whole.format = piece.format;
    }
    if (piece.bytes.isEmpty())
      return whole;
    if (whole.bytes.size() + piece.bytes.size() > largestConversion)
      break;
    whole.bytes += piece.bytes;
  }
  whole.outcome = failure().outcome;
  return whole;
}

bool SelectionReader::waitForProperty(xcb_window_t window, Deadline deadline) {
  while (const auto event = nextEvent(deadline)) {
    if (kind(event) != XCB_PROPERTY_NOTIFY)
      continue;
    const auto& change = as<xcb_property_notify_event_t>(event);
    if (change.window == window && change.atom == property_ &&
        change.state == XCB_PROPERTY_NEW_VALUE)
      return true;
  }
  return false;
}

Conversion SelectionReader::failure() const {
  Conversion result;
  if (watchedChanged_)
    result.outcome = Conversion::Outcome::ownerChanged;
  return result;
}

Reply<xcb_generic_event_t> SelectionReader::nextEvent(Deadline deadline) {
  xcb_connection_t* c = connection_->get();
  xcb_flush(c);
  while (!watchedChanged_ && xcb_connection_has_error(c) == 0) {
    Reply<xcb_generic_event_t> event(xcb_poll_for_event(c));
    if (event) {
      if (kind(event) != fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY)
        return event;
      const auto& change = as<xcb_xfixes_selection_notify_event_t>(event);
      watchedChanged_ = watchWindow_ != XCB_WINDOW_NONE && change.window == watchWindow_;
      continue;
    }
    if (deadline.passed())
      return nullptr;
    pollfd descriptor{xcb_get_file_descriptor(c), POLLIN, 0};
    poll(&descriptor, 1, deadline.remainingMs());
  }
  return nullptr;
}

SelectionReader::Watch::Watch(SelectionReader& reader, xcb_atom_t selection)
    : reader_(reader), selection_(selection) {
  reader_.watchWindow_ = reader_.connection_->createHiddenWindow();
  reader_.watchedChanged_ = false;
  reader_.connection_->tellOwners(selection_, reader_.watchWindow_);
}

SelectionReader::Watch::~Watch() {
  xcb_connection_t* c = reader_.connection_->get();
  reader_.connection_->tellOwners(selection_, reader_.watchWindow_, false);
  xcb_destroy_window(c, reader_.watchWindow_);
  xcb_flush(c);
  reader_.watchWindow_ = XCB_WINDOW_NONE;
  reader_.watchedChanged_ = false;
}

bool SelectionReader::Watch::changed() {
  // The answer to any request comes after every event that the server sent before it.
  reader_.connection_->roundTrip();
  while (!reader_.watchedChanged_ && reader_.nextEvent(Deadline::in(0))) {
  }
  return reader_.watchedChanged_;
}

}  // namespace tavin::x11
