#include "platform/x11/ClipboardAnswers.h"

#include <cstring>

#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {
namespace {

// Enough for every form that a program may ask for at once.
constexpr std::uint32_t longestPairList = 4096;
// Between two of the targets that a program reads.
constexpr double readerPauseSeconds = 0.1;

template <typename Unit>
ClipboardTarget listOf(xcb_atom_t type, const std::vector<Unit>& units) {
  static_assert(sizeof(Unit) == 4);
  return {XCB_ATOM_NONE, type, 32,
          QByteArray(reinterpret_cast<const char*>(units.data()),
                     static_cast<qsizetype>(units.size() * sizeof(Unit)))};
}

}  // namespace

ClipboardAnswers::ClipboardAnswers(const Connection& connection, double transferIdleSeconds)
    : connection_(connection),
      transfers_(connection, transferIdleSeconds),
      targetsAtom_(connection.atom("TARGETS")),
      timestamp_(connection.atom("TIMESTAMP")),
      multiple_(connection.atom("MULTIPLE")),
      saveTargets_(connection.atom("SAVE_TARGETS")),
      atomPair_(connection.atom("ATOM_PAIR")),
      null_(connection.atom("NULL")) {}

void ClipboardAnswers::offer(ClipboardContents contents, xcb_timestamp_t since) {
  contents_ = std::move(contents);
  readers_.clear();
  since_ = since;
}

void ClipboardAnswers::withdraw() { contents_.clear(); }

std::optional<Deadline> ClipboardAnswers::readerDoneAt(xcb_window_t window) {
  const auto found = readers_.find(clientOf(connection_, window));
  if (found == readers_.end())
    return std::nullopt;
  if (transfers_.goesTo(window))
    found->second = Deadline::in(readerPauseSeconds);
  return found->second;
}

std::vector<xcb_atom_t> ClipboardAnswers::targets() const {
  std::vector<xcb_atom_t> targets;
  for (const auto& entry : contents_) targets.push_back(entry.target);
  return targets;
}

void ClipboardAnswers::answer(const xcb_selection_request_event_t& request) {
  // Old programs name no property and mean one named like the target.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const bool forUs =
      request.time == XCB_CURRENT_TIME || static_cast<std::int32_t>(request.time - since_) >= 0;
  const bool done =
      forUs && (request.target == multiple_ ? convertMultiple(request.requestor, request.property)
                                            : convert(request.requestor, request.target, property));
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = done ? property : xcb_atom_t{XCB_ATOM_NONE};
  static_assert(sizeof(notice) <= 32);
  char event[32] = {};
  std::memcpy(event, &notice, sizeof(notice));
  xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event);
}

bool ClipboardAnswers::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
  if (target == targetsAtom_) {
    std::vector<xcb_atom_t> list{targetsAtom_, timestamp_, multiple_, saveTargets_};
    for (const auto& entry : contents_) list.push_back(entry.target);
    put(requestor, property, listOf(XCB_ATOM_ATOM, list));
    return true;
  }
  if (target == timestamp_) {
    put(requestor, property, listOf(XCB_ATOM_INTEGER, std::vector{since_}));
    return true;
  }
  if (target == saveTargets_) {  // Nothing to do for an owner but to agree.
    put(requestor, property, {XCB_ATOM_NONE, null_, 32, {}});
    return true;
  }
  for (const auto& entry : contents_) {
    if (entry.target == target) {
      put(requestor, property, entry);
      readers_.insert_or_assign(clientOf(connection_, requestor), Deadline::in(readerPauseSeconds));
      return true;
    }
  }
  return false;
}

bool ClipboardAnswers::convertMultiple(xcb_window_t requestor, xcb_atom_t property) {
  if (property == XCB_ATOM_NONE)
    return false;
  const Reply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_.get(),
                             xcb_get_property(connection_.get(), 0, requestor, property,
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, longestPairList),
                             nullptr));
  if (!reply || reply->format != 32)
    return false;
  std::vector<xcb_atom_t> pairs(reply->value_len);
  std::memcpy(pairs.data(), xcb_get_property_value(reply.get()), pairs.size() * sizeof(xcb_atom_t));
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const bool possible = pairs[i] != multiple_ && pairs[i + 1] != XCB_ATOM_NONE;
    if (!possible || !convert(requestor, pairs[i], pairs[i + 1]))
      pairs[i + 1] = XCB_ATOM_NONE;
  }
  put(requestor, property, listOf(atomPair_, pairs));
  return true;
}

void ClipboardAnswers::put(xcb_window_t requestor, xcb_atom_t property,
                           const ClipboardTarget& value) {
  if (value.bytes.size() > IncrementalTransfers::pieceSize) {
    transfers_.begin(requestor, property, value);
    return;
  }
  const auto units = static_cast<std::uint32_t>(value.bytes.size() / (value.format / 8));
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, value.type,
                      value.format, units, value.bytes.constData());
}

}  // namespace tavin::x11
