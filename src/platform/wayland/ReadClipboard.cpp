#include "platform/wayland/ReadClipboard.h"

#include <algorithm>
#include <set>

#include "platform/copy/ClipboardTypes.h"

namespace tavin::wayland {
namespace {

using Outcome = SelectionReader::Content::Outcome;

// One private type that does not come shall not use up the time of all.
constexpr double secondsForOptionalType = 0.3;
constexpr double secondsToCheck = 0.3;

// The forms of plain text, best first; the rest of Unicode's are UTF-8.
constexpr const char* latin1Text = "STRING";
constexpr const char* textTypes[] = {"text/plain;charset=utf-8",
                                     "text/plain;charset=UTF-8",
                                     "UTF8_STRING",
                                     "text/plain",
                                     latin1Text,
                                     "TEXT"};

// One attempt to read all of what is listed.
Outcome readListed(SelectionReader& reader, const SelectionReader::Listing& listing,
                   Deadline deadline, PasteboardItem& item) {
  const auto& types = listing.types;
  std::vector<std::optional<QByteArray>> values(types.size());
  std::set<std::string> seen;
  bool anyLate = false;
  for (const std::size_t index : copy::clipboardAskingOrder(types)) {
    if (!seen.insert(types[index]).second)
      continue;
    const bool needed = copy::isNeededClipboardType(types[index]);
    auto content = reader.read(SelectionKind::clipboard, listing, types[index], deadline,
                               needed ? deadline : deadline.orIn(secondsForOptionalType));
    if (content.outcome == Outcome::read)
      values[index] = std::move(content.bytes);
    // What has begun to come and is not all there could not be given back.
    else if (needed || content.outcome == Outcome::changed || !content.bytes.isEmpty())
      return content.outcome;
    else
      anyLate = true;
  }
  for (std::size_t i = 0; i < types.size(); ++i) {
    if (values[i])
      item.types.emplace_back(QString::fromLatin1(types[i]), std::move(*values[i]));
  }
  // Of who is late with all that it has, nothing is known.
  return item.types.empty() && anyLate ? Outcome::late : Outcome::read;
}

// A program that ended in the middle looks as if it had written all, until its offer is gone.
bool isStillThere(SelectionReader& reader, const SelectionReader::Listing& listing,
                  SelectionKind selection) {
  const auto now = reader.list(selection, Deadline::in(secondsToCheck));
  return now && now->change == listing.change;
}

}  // namespace

std::optional<std::vector<PasteboardItem>> readClipboard(SelectionReader& reader,
                                                         Deadline deadline) {
  for (bool first = true; first || !deadline.passed(); first = false) {
    const auto listing = reader.list(SelectionKind::clipboard, deadline);
    if (!listing)
      return std::nullopt;
    if (!listing->offered) {
      // Empty from the start, or its owner ended meanwhile: then what it held is lost.
      return first ? std::optional(std::vector<PasteboardItem>{}) : std::nullopt;
    }
    PasteboardItem item;
    const Outcome outcome = readListed(reader, *listing, deadline, item);
    if (outcome == Outcome::late)
      return std::nullopt;
    if (outcome == Outcome::read && isStillThere(reader, *listing, SelectionKind::clipboard))
      return std::vector{std::move(item)};
  }
  return std::nullopt;
}

std::optional<QString> readText(SelectionReader& reader, SelectionKind selection,
                                Deadline deadline) {
  while (!deadline.passed()) {
    const auto listing = reader.list(selection, deadline);
    if (!listing || !listing->offered)
      return std::nullopt;
    const auto& offered = listing->types;
    const auto best = std::find_if(std::begin(textTypes), std::end(textTypes), [&](const auto* t) {
      return std::find(offered.begin(), offered.end(), t) != offered.end();
    });
    if (best == std::end(textTypes))
      return std::nullopt;
    const auto content = reader.read(selection, *listing, *best, deadline, deadline);
    if (content.outcome == Outcome::late)
      return std::nullopt;
    if (content.outcome == Outcome::read && isStillThere(reader, *listing, selection))
      return *best == latin1Text ? QString::fromLatin1(content.bytes)
                                 : QString::fromUtf8(content.bytes);
  }
  return std::nullopt;
}

}  // namespace tavin::wayland
