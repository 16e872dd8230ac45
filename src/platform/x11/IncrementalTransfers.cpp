#include "platform/x11/IncrementalTransfers.h"

#include <algorithm>

#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {

IncrementalTransfers::IncrementalTransfers(const Connection& connection, double idleSeconds)
    : connection_(connection), idleSeconds_(idleSeconds), incr_(connection.atom("INCR")) {}

void IncrementalTransfers::begin(xcb_window_t requestor, xcb_atom_t property,
                                 const ClipboardTarget& target) {
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.get(), requestor, XCB_CW_EVENT_MASK, &mask);
  const auto size = static_cast<std::uint32_t>(target.bytes.size());
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, incr_, 32, 1,
                      &size);
  transfers_.insert_or_assign(Key{requestor, property},
                              Transfer{target, 0, Deadline::in(idleSeconds_)});
}

void IncrementalTransfers::propertyDeleted(xcb_window_t requestor, xcb_atom_t property) {
  const auto found = transfers_.find({requestor, property});
  if (found == transfers_.end())
    return;
  Transfer& transfer = found->second;
  const auto& [target, type, format, bytes] = transfer.target;
  // An empty piece says that this was all.
  const qsizetype size = std::min(pieceSize, bytes.size() - transfer.sent);
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, type, format,
                      static_cast<std::uint32_t>(size / (format / 8)),
                      bytes.constData() + transfer.sent);
  transfer.sent += size;
  transfer.idleUntil = Deadline::in(idleSeconds_);
  if (size == 0) {
    transfers_.erase(found);
    stopListening(requestor);
  }
}

void IncrementalTransfers::windowGone(xcb_window_t requestor) {
  std::erase_if(transfers_, [&](const auto& entry) { return entry.first.first == requestor; });
}

void IncrementalTransfers::dropIdle() {
  for (auto entry = transfers_.begin(); entry != transfers_.end();) {
    const xcb_window_t requestor = entry->first.first;
    if (!entry->second.idleUntil.passed()) {
      ++entry;
      continue;
    }
    entry = transfers_.erase(entry);
    stopListening(requestor);
  }
}

bool IncrementalTransfers::goesTo(xcb_window_t window) const {
  return std::ranges::any_of(transfers_, [&](const auto& entry) {
    return sameClient(connection_, entry.first.first, window);
  });
}

std::optional<Deadline> IncrementalTransfers::nextDeadline() const {
  std::optional<Deadline> next;
  for (const auto& [key, transfer] : transfers_) {
    if (!next || transfer.idleUntil.remainingMs() < next->remainingMs())
      next = transfer.idleUntil;
  }
  return next;
}

void IncrementalTransfers::stopListening(xcb_window_t requestor) {
  const auto other = transfers_.lower_bound({requestor, XCB_ATOM_NONE});
  if (other != transfers_.end() && other->first.first == requestor)
    return;
  const std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT;
  xcb_change_window_attributes(connection_.get(), requestor, XCB_CW_EVENT_MASK, &mask);
}

}  // namespace tavin::x11
