#include "platform/x11/X11Pasteboard.h"

#include <set>
#include <utility>

#include "platform/x11/ClipboardSnapshot.h"

namespace tavin::x11 {
namespace {

constexpr double kSecondsForSnapshot = 1.0;
constexpr double kSecondsForText = 1.0;

// The forms of plain text, best first, and whether they are UTF-8.
constexpr std::pair<const char*, bool> kTextTargets[] = {
    {"UTF8_STRING", true},
    {"text/plain;charset=utf-8", true},
    {"text/plain;charset=UTF-8", true},
    {"STRING", false},
    {"text/plain", true},
};

}  // namespace

X11Pasteboard::X11Pasteboard(std::unique_ptr<SelectionReader> reader,
                             std::shared_ptr<ClipboardServer> server)
    : reader_(std::move(reader)), server_(std::move(server)) {}

std::optional<std::vector<PasteboardItem>> X11Pasteboard::pasteboardItems() {
  server_->changeCount();  // A clipboard that was just cleared is given up before it is read.
  encodings_.clear();
  auto snapshot = readClipboard(*reader_, Deadline::in(kSecondsForSnapshot));
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
  const Deadline deadline = Deadline::in(kSecondsForText);
  for (const auto& [name, utf8] : kTextTargets) {
    const auto text = reader_->convert(clipboard, connection.atom(name), deadline);
    if (text.outcome == Conversion::Outcome::converted && text.format == 8)
      return utf8 ? QString::fromUtf8(text.bytes) : QString::fromLatin1(text.bytes);
    if (text.outcome == Conversion::Outcome::late)
      return std::nullopt;
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

X11Pasteboard::Encoding X11Pasteboard::encodingOf(const QString& name, xcb_atom_t target,
                                                  const QByteArray& bytes) const {
  const auto known = encodings_.find(name);
  if (known == encodings_.end() || bytes.size() % (known->second.format / 8) != 0)
    return {target, 8};
  return known->second;
}

}  // namespace tavin::x11
