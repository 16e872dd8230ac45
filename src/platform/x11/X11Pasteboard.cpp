#include "platform/x11/X11Pasteboard.h"

#include <set>
#include <utility>

#include "platform/x11/ClipboardSnapshot.h"

namespace tavin::x11 {
namespace {

constexpr double secondsForSnapshot = 1.0;
constexpr double secondsForText = 1.0;

// The forms of plain text, best first. TEXT leaves it to the owner which one it gives.
constexpr const char* textTargets[] = {"UTF8_STRING",
                                       "text/plain;charset=utf-8",
                                       "text/plain;charset=UTF-8",
                                       "STRING",
                                       "text/plain",
                                       "TEXT",
                                       "COMPOUND_TEXT"};

// Compound text is Latin-1 but for the parts in other encodings, between escape sequences. Those
// in UTF-8 are understood; none where there are others, of the age before Unicode.
std::optional<QString> fromCompoundText(const QByteArray& bytes) {
  const QByteArray beginUtf8("\x1b%G");
  const QByteArray endUtf8("\x1b%@");
  QString text;
  for (qsizetype at = 0; at < bytes.size();) {
    const qsizetype begin = bytes.indexOf('\x1b', at);
    text += QString::fromLatin1(bytes.mid(at, begin < 0 ? -1 : begin - at));
    if (begin < 0)
      break;
    if (bytes.mid(begin, beginUtf8.size()) != beginUtf8)
      return std::nullopt;
    const qsizetype from = begin + beginUtf8.size();
    const qsizetype end = bytes.indexOf(endUtf8, from);
    text += QString::fromUtf8(bytes.mid(from, end < 0 ? -1 : end - from));
    at = end < 0 ? bytes.size() : end + endUtf8.size();
  }
  return text;
}

}  // namespace

X11Pasteboard::X11Pasteboard(std::unique_ptr<SelectionReader> reader,
                             std::shared_ptr<ClipboardServer> server)
    : reader_(std::move(reader)), server_(std::move(server)) {}

std::optional<std::vector<PasteboardItem>> X11Pasteboard::pasteboardItems() {
  server_->changeCount();  // A clipboard that was just cleared is given up before it is read.
  encodings_.clear();
  auto snapshot = readClipboard(*reader_, Deadline::in(secondsForSnapshot));
  if (!snapshot)
    return std::nullopt;
  if (!snapshot->owned)
    return std::vector<PasteboardItem>{};
  std::vector<xcb_atom_t> targets;
  for (const auto& entry : snapshot->contents) targets.push_back(entry.target);
  const auto names = reader_->atomNames(targets);
  PasteboardItem item;
  for (std::size_t i = 0; i < names.size(); ++i) {
    auto& entry = snapshot->contents[i];
    const QString name = QString::fromLatin1(names[i]);
    encodings_[name] = {entry.type, entry.format};
    item.types.emplace_back(name, std::move(entry.bytes));
  }
  return std::vector{std::move(item)};
}

std::int64_t X11Pasteboard::changeCount() { return server_->changeCount(); }

std::optional<QString> X11Pasteboard::string() {
  const Connection& connection = reader_->connection();
  const xcb_atom_t clipboard = connection.atom("CLIPBOARD");
  const Deadline deadline = Deadline::in(secondsForText);
  for (const char* name : textTargets) {
    const xcb_atom_t target = connection.atom(name);
    const auto text = reader_->convert(clipboard, target, deadline);
    if (text.outcome == Conversion::Outcome::late)
      return std::nullopt;
    if (text.outcome != Conversion::Outcome::converted || text.format != 8)
      continue;
    const bool anyForm = target == connection.atom("TEXT");
    const xcb_atom_t form = anyForm ? text.type : target;
    if (form == connection.atom("COMPOUND_TEXT"))
      return fromCompoundText(text.bytes);
    return form == connection.atom("STRING") ? QString::fromLatin1(text.bytes)
                                             : QString::fromUtf8(text.bytes);
  }
  return std::nullopt;
}

void X11Pasteboard::clearContents() { server_->clear(); }

void X11Pasteboard::writeObjects(const std::vector<PasteboardItem>& items) {
  // A selection has one item only; of several, the first to have a type gives it.
  ClipboardContents contents;
  std::set<QString> seen;
  for (const auto& item : items) {
    for (const auto& [name, bytes] : item.types) {
      if (!seen.insert(name).second)
        continue;
      const xcb_atom_t target = reader_->connection().atom(name.toLatin1().toStdString());
      const auto [type, format] = encodingOf(name, target, bytes);
      contents.push_back({target, type, format, bytes});
    }
  }
  server_->serve(std::move(contents));
}

void X11Pasteboard::beginWatch(std::function<void()> onChange) {
  server_->beginWatch(std::move(onChange));
}

X11Pasteboard::Encoding X11Pasteboard::encodingOf(const QString& name, xcb_atom_t target,
                                                  const QByteArray& bytes) const {
  const auto known = encodings_.find(name);
  if (known == encodings_.end() || bytes.size() % (known->second.format / 8) != 0)
    return {target, 8};
  return known->second;
}

}  // namespace tavin::x11
