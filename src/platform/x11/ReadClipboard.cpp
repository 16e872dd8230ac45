#include "platform/x11/ReadClipboard.h"

#include <cstring>
#include <set>

#include "platform/copy/ClipboardTypes.h"

namespace tavin::x11 {
namespace {

using Outcome = Conversion::Outcome;

// One private type that does not come shall not use up the time of all.
constexpr double secondsForOptionalTarget = 0.3;
// Office programs offer some forty. Each costs messages, whatever time is left.
constexpr std::size_t mostTargets = 1000;

// Each atom once, in order.
std::vector<xcb_atom_t> atomsIn(const Conversion& list) {
  std::vector<xcb_atom_t> atoms;
  std::set<xcb_atom_t> seen;
  for (qsizetype at = 0; at + qsizetype(sizeof(xcb_atom_t)) <= list.bytes.size();
       at += sizeof(xcb_atom_t)) {
    xcb_atom_t atom = XCB_ATOM_NONE;
    std::memcpy(&atom, list.bytes.constData() + at, sizeof atom);
    if (seen.insert(atom).second)
      atoms.push_back(atom);
  }
  return atoms;
}

// One attempt to read all targets of the present owner.
class Attempt {
 public:
  Attempt(SelectionReader& reader, xcb_atom_t clipboard, Deadline deadline)
      : reader_(reader), clipboard_(clipboard), deadline_(deadline) {}

  Outcome read();
  ClipboardContents contents;

 private:
  Outcome listTargets();
  Outcome readTarget(std::size_t index);

  SelectionReader& reader_;
  xcb_atom_t clipboard_;
  Deadline deadline_;
  std::vector<xcb_atom_t> targets_;
  std::vector<std::string> names_;
  std::vector<std::optional<ClipboardTarget>> values_;
  bool anyLate_ = false;
};

Outcome Attempt::listTargets() {
  const Connection& connection = reader_.connection();
  const auto list = reader_.convert(clipboard_, connection.atom("TARGETS"), deadline_);
  if (list.outcome != Outcome::converted && list.outcome != Outcome::refused)
    return list.outcome;
  // An owner too plain to tell, or one that answers with its text whatever it is asked for, is
  // asked only for texts.
  const bool told = list.outcome == Outcome::converted && list.format == 32;
  targets_ =
      told ? atomsIn(list) : std::vector{connection.atom("UTF8_STRING"), connection.atom("STRING")};
  if (targets_.size() > mostTargets)
    return Outcome::late;
  names_ = reader_.atomNames(targets_);
  values_.resize(targets_.size());
  return told ? Outcome::converted : Outcome::refused;
}

Outcome Attempt::readTarget(std::size_t index) {
  const bool needed = copy::isNeededClipboardType(names_[index]);
  auto value = reader_.convert(clipboard_, targets_[index], deadline_,
                               needed ? deadline_ : deadline_.orIn(secondsForOptionalTarget));
  if (value.outcome == Outcome::converted)
    values_[index] = {targets_[index], value.type, value.format, std::move(value.bytes)};
  // What has begun to come and is not all there could not be given back.
  const bool left = value.outcome == Outcome::late && !needed && value.bytes.isEmpty();
  anyLate_ = anyLate_ || left;
  return left ? Outcome::refused : value.outcome;
}

Outcome Attempt::read() {
  const Outcome listed = listTargets();
  if (listed != Outcome::converted && listed != Outcome::refused)
    return listed;
  for (const std::size_t index : copy::clipboardAskingOrder(names_)) {
    const Outcome outcome = readTarget(index);
    if (outcome == Outcome::late || outcome == Outcome::ownerChanged)
      return outcome;
  }
  for (auto& value : values_) {
    if (value)
      contents.push_back(std::move(*value));
  }
  // Of who neither lists targets nor has a text, or is late with all that it has, nothing is known.
  const bool unknown = contents.empty() && (listed == Outcome::refused || anyLate_);
  return unknown ? Outcome::late : Outcome::converted;
}

}  // namespace

std::optional<ClipboardSnapshot> readClipboard(SelectionReader& reader, Deadline deadline) {
  const xcb_atom_t clipboard = reader.connection().atom("CLIPBOARD");
  for (bool first = true; first || !deadline.passed(); first = false) {
    SelectionReader::Watch watch(reader, clipboard);
    if (reader.owner(clipboard) == XCB_WINDOW_NONE) {
      // Empty from the start, or its owner ended meanwhile: then what it held is lost.
      return first ? std::optional(ClipboardSnapshot{}) : std::nullopt;
    }
    Attempt attempt(reader, clipboard, deadline);
    const Outcome outcome = attempt.read();
    if (outcome == Outcome::converted && !watch.changed())
      return ClipboardSnapshot{true, std::move(attempt.contents)};
    if (outcome == Outcome::late)
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tavin::x11
