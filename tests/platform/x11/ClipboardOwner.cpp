#include "platform/x11/ClipboardOwner.h"

#include <poll.h>

#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <cstring>
#include <random>

namespace tavin::test {
namespace {

constexpr qsizetype kPiece = 100'000;  // Not a multiple of what the other side uses.

std::string atomName(xcb_connection_t* c, xcb_atom_t atom) {
  const x11::Reply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(c, xcb_get_atom_name(c, atom), nullptr));
  return reply ? std::string(xcb_get_atom_name_name(reply.get()),
                             static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())))
               : std::string();
}

// As old programs do it: TEXT comes as the kind of text that it is, and an answer that holds
// nothing has the type NULL.
std::string typeOf(const std::string& target) {
  if (target == "TEXT")
    return "STRING";
  return target == "SAVE_TARGETS" ? "NULL" : target;
}

}  // namespace

ClipboardOwner::ClipboardOwner(Targets targets, OwnerManners manners)
    : connection_(x11::Connection::open()),
      targets_(std::move(targets)),
      manners_(std::move(manners)) {
  xcb_connection_t* c = connection_->get();
  window_ = xcb_generate_id(c);
  xcb_create_window(c, 0, window_, connection_->root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  claim();
  connection_->atom("a round trip");
  thread_ = std::thread([this] { run(); });
}

ClipboardOwner::~ClipboardOwner() { end(); }

void ClipboardOwner::end() {
  ending_ = true;
  if (thread_.joinable())
    thread_.join();
  connection_.reset();
}

std::vector<std::string> ClipboardOwner::requests() const { return requests_; }

void ClipboardOwner::claim() {
  xcb_set_selection_owner(connection_->get(), window_, connection_->atom(manners_.selection),
                          XCB_CURRENT_TIME);
}

void ClipboardOwner::run() {
  xcb_connection_t* c = connection_->get();
  while (!ending_) {
    xcb_flush(c);
    const x11::Reply<xcb_generic_event_t> event(xcb_poll_for_event(c));
    if (!event) {
      pollfd descriptor{xcb_get_file_descriptor(c), POLLIN, 0};
      poll(&descriptor, 1, 20);
      continue;
    }
    const int kind = event->response_type & 0x7f;
    if (kind == XCB_SELECTION_REQUEST &&
        !answer(*reinterpret_cast<xcb_selection_request_event_t*>(event.get()))) {
      connection_.reset();
      return;
    }
    if (kind == XCB_PROPERTY_NOTIFY)
      sendNextPiece(*reinterpret_cast<xcb_property_notify_event_t*>(event.get()));
  }
}

bool ClipboardOwner::answer(const xcb_selection_request_event_t& request) {
  const std::string name = atomName(connection_->get(), request.target);
  requests_.push_back(name);
  if (name == manners_.diesOn)
    return false;
  if (name == manners_.changesOn) {
    manners_.changesOn.clear();
    targets_ = manners_.changesTo;
    claim();
  }
  if (manners_.silentOn.contains(name))
    return true;
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = put(request, name) ? request.property : xcb_atom_t{XCB_ATOM_NONE};
  char event[32] = {};
  std::memcpy(event, &notice, sizeof(notice));
  xcb_send_event(connection_->get(), 0, request.requestor, 0, event);
  return true;
}

bool ClipboardOwner::put(const xcb_selection_request_event_t& request, const std::string& name) {
  xcb_connection_t* c = connection_->get();
  if (manners_.knowsOnlyText) {
    const QByteArray& text = targets_.front().second;
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        connection_->atom("UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(text.size()), text.constData());
    return true;
  }
  if (name == "TARGETS" && !manners_.refuses.contains(name)) {
    std::vector<xcb_atom_t> list{connection_->atom("TIMESTAMP"), connection_->atom("TARGETS")};
    for (const auto& [target, bytes] : targets_) list.push_back(connection_->atom(target));
    for (std::uint32_t i = 0; i < manners_.listsMore; ++i) list.push_back(1'000'000 + i);
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(list.size()), list.data());
    return true;
  }
  const auto found = std::find_if(targets_.begin(), targets_.end(),
                                  [&](const auto& entry) { return entry.first == name; });
  if (found == targets_.end() || manners_.refuses.contains(name))
    return false;
  const QByteArray& bytes = found->second;
  const xcb_atom_t type = connection_->atom(typeOf(name));
  if (bytes.size() > kPiece) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    xcb_change_window_attributes(c, request.requestor, XCB_CW_EVENT_MASK, &mask);
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        connection_->atom("INCR"), 32, 1, &size);
    const std::string& pieceType = manners_.pieceType;
    sending_.push_back({request.requestor, request.property,
                        pieceType.empty() ? type : connection_->atom(pieceType), bytes, 0});
    return true;
  }
  xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, request.property, type, 8,
                      static_cast<std::uint32_t>(bytes.size()), bytes.constData());
  return true;
}

void ClipboardOwner::sendNextPiece(const xcb_property_notify_event_t& taken) {
  if (taken.state != XCB_PROPERTY_DELETE)
    return;
  const auto found = std::find_if(sending_.begin(), sending_.end(), [&](const Sending& sending) {
    return sending.requestor == taken.window && sending.property == taken.atom;
  });
  if (found == sending_.end())
    return;
  std::this_thread::sleep_for(manners_.pieceTakes);
  const qsizetype size = std::min(kPiece, found->bytes.size() - found->sent);
  xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, found->requestor, found->property,
                      found->type, 8, static_cast<std::uint32_t>(size),
                      found->bytes.constData() + found->sent);
  found->sent += size;
  if (size == 0)
    sending_.erase(found);
}

QByteArray picture(qsizetype size) {
  std::mt19937 random(static_cast<unsigned>(size));
  QByteArray bytes(size, '\0');
  for (auto& byte : bytes) byte = static_cast<char>(random());
  return "\x89PNG\r\n\x1a\n" + bytes;
}

QByteArray pasted(const QString& target) {
  QProcess xclip;
  xclip.start("xclip", {"-o", "-selection", "clipboard", "-t", target});
  xclip.waitForFinished(20'000);
  return xclip.exitCode() == 0 ? xclip.readAllStandardOutput() : QByteArray("(no such target)");
}

QStringList pastedTargets() {
  return QString::fromLatin1(pasted("TARGETS")).split('\n', Qt::SkipEmptyParts);
}

}  // namespace tavin::test
