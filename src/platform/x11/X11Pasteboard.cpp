#include "platform/x11/X11Pasteboard.h"

#include <map>
#include <set>
#include <string>
#include <utility>

#include "platform/x11/CompoundText.h"
#include "platform/x11/ReadClipboard.h"

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

// How an item's targets were delivered: by the name of the type, as the item may outlive the
// display that its atoms are of.
struct Encoding {
  std::string type;
  std::uint8_t format;
};
using Encodings = std::map<QString, Encoding>;

ClipboardTarget targetOf(const Connection& connection, const Encodings* encodings,
                         const QString& name, const QByteArray& bytes) {
  const std::string latin1 = name.toLatin1().toStdString();
  const xcb_atom_t target = connection.atom(latin1);
  if (!encodings || !encodings->contains(name))
    return {target, target, 8, bytes};
  const auto& [type, format] = encodings->at(name);
  if (type.empty() || bytes.size() % (format / 8) != 0)
    return {target, target, 8, bytes};
  return {target, type == latin1 ? target : connection.atom(type), format, bytes};
}

}  // namespace

X11Pasteboard::X11Pasteboard(std::unique_ptr<SelectionReader> reader,
                             std::shared_ptr<ClipboardServer> server)
    : reader_(std::move(reader)), server_(std::move(server)) {}

std::optional<std::vector<PasteboardItem>> X11Pasteboard::pasteboardItems() {
  server_->changeCount();  // A clipboard that was just cleared is given up before it is read.
  auto snapshot = readClipboard(*reader_, Deadline::in(secondsForSnapshot));
  if (!snapshot)
    return std::nullopt;
  if (!snapshot->owned)
    return std::vector<PasteboardItem>{};
  auto& contents = snapshot->contents;
  std::vector<xcb_atom_t> atoms;
  for (const auto& entry : contents) atoms.push_back(entry.target);
  for (const auto& entry : contents) atoms.push_back(entry.type);
  const auto names = reader_->atomNames(atoms);
  const auto encodings = std::make_shared<Encodings>();
  PasteboardItem item;
  for (std::size_t i = 0; i < contents.size(); ++i) {
    const QString name = QString::fromLatin1(names[i]);
    (*encodings)[name] = {names[contents.size() + i], contents[i].format};
    item.types.emplace_back(name, std::move(contents[i].bytes));
  }
  item.manner = encodings;
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
    const auto* encodings = static_cast<const Encodings*>(item.manner.get());
    for (const auto& [name, bytes] : item.types) {
      if (seen.insert(name).second)
        contents.push_back(targetOf(reader_->connection(), encodings, name, bytes));
    }
  }
  server_->serve(std::move(contents));
}

void X11Pasteboard::beginWatch(std::function<void()> onChange) {
  server_->beginWatch(std::move(onChange));
}

}  // namespace tavin::x11
