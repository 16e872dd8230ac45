// A program that owns the clipboard on X11 and answers anything. Needs a display.

#include <fuzzer/FuzzedDataProvider.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Claim.h"
#include "platform/x11/ClipboardServer.h"
#include "platform/x11/Connection.h"
#include "platform/x11/X11Pasteboard.h"

using namespace tavin;
using x11::Connection;
using x11::Reply;

namespace {

constexpr std::array<const char*, 16> names{
    "TARGETS",   "UTF8_STRING", "STRING",  "TEXT",          "COMPOUND_TEXT", "INCR",
    "ATOM",      "TIMESTAMP",   "INTEGER", "SAVE_TARGETS",  "text/plain",    "text/uri-list",
    "image/png", "MULTIPLE",    "NULL",    "a private type"};
constexpr std::size_t longestPiece = 300;

// Owns the clipboard, and does at each request what the input says. Never ends.
class Owner {
 public:
  Owner() : connection_(Connection::open()) {
    fuzz::claim(connection_ != nullptr, "there is a display");
    window_ = connection_->createHiddenWindow();
    for (const char* name : names) atoms_.push_back(connection_->atom(name));
    incr_ = atoms_[5];
    lastAtom_ = *std::ranges::max_element(atoms_);
    std::thread([this] { serve(); }).detach();
  }
  void answerWith(FuzzedDataProvider* input) {
    const std::lock_guard lock(mutex_);
    input_ = input;
    claimSelection();
    connection_->roundTrip();
  }

 private:
  void claimSelection() {
    xcb_set_selection_owner(connection_->get(), window_, connection_->atom("CLIPBOARD"),
                            XCB_CURRENT_TIME);
  }

  [[noreturn]] void serve() {
    xcb_connection_t* const c = connection_->get();
    for (;;) {
      pollfd file{xcb_get_file_descriptor(c), POLLIN, 0};
      poll(&file, 1, -1);
      const std::lock_guard lock(mutex_);
      fuzz::claim(xcb_connection_has_error(c) == 0, "the display stays");
      while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(c)}) {
        const int kind = event->response_type & 0x7f;
        if (kind == XCB_SELECTION_REQUEST)
          answer(*reinterpret_cast<xcb_selection_request_event_t*>(event.get()));
        if (kind == XCB_PROPERTY_NOTIFY)
          sendPiece(*reinterpret_cast<xcb_property_notify_event_t*>(event.get()));
      }
      xcb_flush(c);
    }
  }

  bool isAtEnd() const { return input_ == nullptr || input_->remaining_bytes() == 0; }

  void answer(const xcb_selection_request_event_t& request) {
    const int manner = isAtEnd() ? 0 : input_->ConsumeIntegralInRange(0, 15);
    request_ = request;
    if (manner == 1)
      claimSelection();
    if (manner == 2)
      beginPieces();
    if (manner > 2)
      put(manner == 3);
    notify(manner == 0 ? xcb_atom_t{XCB_ATOM_NONE} : request.property);
  }

  xcb_atom_t anyAtom(xcb_atom_t last) {
    return input_->ConsumeBool()
               ? atoms_[input_->ConsumeIntegralInRange<std::size_t>(0, atoms_.size() - 1)]
               : input_->ConsumeIntegralInRange<xcb_atom_t>(1, last);
  }
  // The server knows it: it takes no property of another type, and the reader would wait in vain.
  xcb_atom_t anyType() { return anyAtom(lastAtom_); }

  // Mostly what was asked for: for the list of targets atoms, else something of that type.
  void put(bool odd) {
    const bool list = request_.target == atoms_[0];
    if (odd)
      putOdd(anyType(), static_cast<std::uint8_t>(8 << input_->ConsumeIntegralInRange(0, 2)));
    else if (list)
      change(atoms_[6], 32, anyAtoms());
    else
      change(request_.target, 8, anyBytes());
  }

  // What announces pieces is followed by them: the reader waits long for those that never come.
  void putOdd(xcb_atom_t type, std::uint8_t format) {
    if (type == incr_)
      awaitTaking();
    change(type, format, anyBytes());
  }

  std::vector<std::uint8_t> anyBytes() {
    return input_->ConsumeBytes<std::uint8_t>(
        input_->ConsumeIntegralInRange<std::size_t>(0, longestPiece));
  }

  std::vector<std::uint8_t> anyAtoms() {
    std::vector<std::uint8_t> bytes;
    for (int left = input_->ConsumeIntegralInRange(0, 8); left > 0; --left) {
      const xcb_atom_t atom = anyAtom(1000);
      const auto* begin = reinterpret_cast<const std::uint8_t*>(&atom);
      bytes.insert(bytes.end(), begin, begin + sizeof(atom));
    }
    return bytes;
  }

  void beginPieces() {
    awaitTaking();
    change(incr_, 32, anyAtoms());
  }

  void awaitTaking() {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_->get(), request_.requestor, XCB_CW_EVENT_MASK, &mask);
  }

  // Each time that the piece before was taken; an empty one is the last.
  void sendPiece(const xcb_property_notify_event_t& taken) {
    if (taken.state != XCB_PROPERTY_DELETE || taken.window != request_.requestor)
      return;
    if (isAtEnd())
      change(request_.target, 8, {});
    else
      change(input_->ConsumeBool() ? request_.target : anyType(), 8, anyBytes());
  }

  void change(xcb_atom_t type, std::uint8_t format, const std::vector<std::uint8_t>& bytes) {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, request_.requestor,
                        request_.property, type, format,
                        static_cast<std::uint32_t>(bytes.size() / (format / 8)), bytes.data());
  }

  void notify(xcb_atom_t property) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = request_.requestor;
    notice.selection = request_.selection;
    notice.target = request_.target;
    notice.property = property;
    char event[32] = {};
    std::memcpy(event, &notice, sizeof(notice));
    xcb_send_event(connection_->get(), 0, request_.requestor, 0, event);
  }

  const std::unique_ptr<Connection> connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::vector<xcb_atom_t> atoms_;
  xcb_atom_t incr_ = XCB_ATOM_NONE;
  xcb_atom_t lastAtom_ = XCB_ATOM_NONE;      // Atoms are numbered one by one.
  xcb_selection_request_event_t request_{};  // The last one.
  std::mutex mutex_;                         // For all.
  FuzzedDataProvider* input_ = nullptr;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto* const owner = new Owner;
  static x11::X11Pasteboard pasteboard(x11::SelectionReader::create(),
                                       x11::ClipboardServer::create());
  FuzzedDataProvider input(data, size);
  owner->answerWith(&input);
  pasteboard.string();
  const auto items = pasteboard.pasteboardItems();
  owner->answerWith(nullptr);
  if (!items || items->empty())
    return 0;
  pasteboard.writeObjects(*items);
  const auto given = pasteboard.pasteboardItems();
  fuzz::claim(given && given->size() == 1 && given->front().types == items->front().types,
              "what is given back is what was there");
  return 0;
}
