#include "platform/capture/SelectedText.h"

#include <algorithm>
#include <iterator>

#include "platform/atspi/TextGatherer.h"

namespace tavin::capture {
namespace {

using namespace atspi;

using PrimaryProof = windows::WindowSystem::PrimaryProof;

constexpr double secondsForText = 1.5;
// A page with more paragraphs than this in its selection comes faster through PRIMARY.
constexpr std::size_t fewObjects = 24;
constexpr std::size_t manyObjects = 20'000;
constexpr int deepestObject = 40;
constexpr int panesAroundDocument = 2;

// One reading of one focused object's selection.
class Reading {
 public:
  Reading(FocusTracker& tracker, const Focus& focus)
      : bus_(tracker.bus()), windows_(tracker.windows()), focus_(focus) {}

  std::optional<QString> read();

 private:
  std::optional<QString> readObject();
  std::optional<QString> readPage(const atspi::ObjectRef& object);
  std::optional<QString> readParagraphs(const atspi::ObjectRef& document);
  std::optional<atspi::ObjectRef> documentIn(const atspi::ObjectRef& pane);
  std::optional<QString> primaryWith(const QStringList& parts);
  std::optional<QString> primary(PrimaryProof proof);
  std::vector<atspi::ObjectRef> ancestors(std::vector<Role>& roles);
  bool losesCharacters(const QString& text);

  atspi::Bus& bus_;
  windows::WindowSystem& windows_;
  const Focus& focus_;
  const Deadline deadline_ = Deadline::in(secondsForText);
};

// What is left of a text when line breaks and marks, which differ between the two ways to read it,
// are out.
QString letters(const QString& text) {
  QString letters;
  for (const QChar c : withoutMarks(text)) {
    if (!c.isSpace() && c != QChar(0xfeff))
      letters += c;
  }
  return letters;
}

bool isMask(const QString& text) {
  return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
    return c == QChar(0x2022) || c == QChar(0x25cf);
  });
}

std::optional<QString> Reading::read() {
  if (focus_.isPassword())
    return std::nullopt;
  if (focus_.object) {
    auto text = readObject();
    if (text && !text->isEmpty())
      return isMask(*text) ? std::nullopt : text;
    if (focus_.object->hasText)  // It can tell, and there is none.
      return std::nullopt;
  }
  // A terminal that is on the bus but did not answer in time may well have nothing selected now.
  const bool silent = focus_.program && !focus_.object;
  if (focus_.isTerminal())
    return silent ? std::nullopt : primary(PrimaryProof::sameProgram);
  if (!focus_.window.browser && (focus_.window.withoutCopyKey || focus_.showsNoText))
    return primary(PrimaryProof::takenInFront);
  return std::nullopt;
}

std::optional<QString> Reading::readObject() {
  const atspi::FocusedObject& object = *focus_.object;
  const bool ownText = object.states.has(States::editable) || object.role == Role::terminal ||
                       object.role == Role::documentWeb;
  if (ownText && object.role != Role::paragraph)
    return object.selections > 0 ? readPage(object.object) : std::nullopt;
  if (!object.hasText) {
    if (const auto document = documentIn(object.object))
      return readParagraphs(*document);
  }
  std::vector<Role> roles;
  const auto above = ancestors(roles);
  if (object.role == Role::paragraph && !above.empty() && roles.front() == Role::documentText)
    return readParagraphs(above.front());
  // A link in a page has the keyboard and knows its own text only: the page knows the selection.
  std::vector<Question> questions;
  for (const auto& ancestor : above) questions.push_back({ancestor, "Text", "GetNSelections"});
  const auto counts = bus_.ask(questions, deadline_);
  for (std::size_t i = above.size(); i-- > 0;) {
    if (valueIn(counts[i]).toInt() > 0)
      return readPage(above[i]);
  }
  return object.selections > 0 ? readPage(object.object) : std::nullopt;
}

// A word processor whose cursor is out of view gives the focus to a pane around its document.
std::optional<atspi::ObjectRef> Reading::documentIn(const atspi::ObjectRef& pane) {
  std::vector<atspi::ObjectRef> level{pane};
  for (int depth = 0; depth < panesAroundDocument; ++depth) {
    std::vector<Question> questions;
    for (const auto& object : level) questions.push_back({object, "Accessible", "GetChildren"});
    level.clear();
    for (const auto& answer : bus_.ask(questions, deadline_)) {
      const auto children = objectsIn(answer);
      level.insert(level.end(), children.begin(),
                   children.begin() + std::min<std::ptrdiff_t>(std::ssize(children), fewObjects));
    }
    questions.clear();
    for (const auto& object : level) questions.push_back({object, "Accessible", "GetRole"});
    const auto roles = bus_.ask(questions, deadline_);
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roleIn(roles[i]) == Role::documentText)
        return level[i];
    }
  }
  return std::nullopt;
}

// From the parent up to the window, which is left out.
std::vector<atspi::ObjectRef> Reading::ancestors(std::vector<Role>& roles) {
  std::vector<atspi::ObjectRef> above;
  atspi::ObjectRef object = focus_.object->object;
  while (above.size() < deepestObject && !deadline_.passed()) {
    object = objectIn(bus_.ask(property(object, "Accessible", "Parent"), deadline_));
    if (object.isNull())
      break;
    const Role role = roleIn(bus_.ask(Question{object, "Accessible", "GetRole"}, deadline_));
    if (role == Role::frame || role == Role::window || role == Role::dialog ||
        role == Role::application || role == Role::unknown)
      break;
    above.push_back(object);
    roles.push_back(role);
  }
  return above;
}

std::optional<QString> Reading::readPage(const atspi::ObjectRef& object) {
  const auto sample = TextGatherer(bus_, fewObjects, deadline_).gather(object);
  if (sample.complete && !losesCharacters(sample.text))
    return sample.text;
  if (auto whole = primaryWith(sample.parts))
    return whole;
  if (sample.complete)
    return sample.text;
  const auto text = TextGatherer(bus_, manyObjects, deadline_).gather(object);
  return text.complete ? std::optional(text.text) : std::nullopt;
}

// Chromium counts an emoji twice in one place and once in another, so the selection ends early.
bool Reading::losesCharacters(const QString& text) {
  const bool emoji = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate(); });
  return emoji &&
         valueIn(bus_.ask(property(*focus_.program, "Application", "ToolkitName"), deadline_))
                 .toString() == "Chromium";
}

// Whether the first or the last one of the paragraphs has a part in the selection, by their answers
// to how many selections they have. What else stands beside them answers with an error.
bool mayGoOnOutOfView(const std::vector<QDBusMessage>& counts) {
  const auto first = std::find_if(counts.begin(), counts.end(), isAnswer);
  const auto last = std::find_if(counts.rbegin(), counts.rend(), isAnswer);
  return first != counts.end() && (valueIn(*first).toInt() > 0 || valueIn(*last).toInt() > 0);
}

// A word processor's paragraphs each know their own part only, and those out of view are not shown
// to accessibility at all.
std::optional<QString> Reading::readParagraphs(const atspi::ObjectRef& document) {
  const auto paragraphs =
      objectsIn(bus_.ask(Question{document, "Accessible", "GetChildren"}, deadline_));
  std::vector<Question> questions;
  for (const auto& paragraph : paragraphs)
    questions.push_back({paragraph, "Text", "GetNSelections"});
  const auto counts = bus_.ask(questions, deadline_);
  bool complete = std::none_of(counts.begin(), counts.end(), isLate);
  QStringList texts;
  for (std::size_t i = 0; i < paragraphs.size() && !deadline_.passed(); ++i) {
    if (valueIn(counts[i]).toInt() == 0)
      continue;
    const auto text = TextGatherer(bus_, manyObjects, deadline_).gather(paragraphs[i]);
    complete = complete && text.complete;
    if (!text.text.isEmpty())
      texts << text.text;
  }
  if (texts.isEmpty() || deadline_.passed())
    return std::nullopt;
  if (texts.size() > 1 || !complete || mayGoOnOutOfView(counts)) {
    if (auto whole = primaryWith(texts))
      return whole;
  }
  return complete ? std::optional(texts.join('\n')) : std::nullopt;
}

// PRIMARY, where it is the same selection: the focused program's, with all these parts in it.
std::optional<QString> Reading::primaryWith(const QStringList& parts) {
  const auto text = primary(PrimaryProof::sameProgram);
  if (!text)
    return std::nullopt;
  const QString all = letters(*text);
  const bool same = std::all_of(parts.begin(), parts.end(),
                                [&](const QString& part) { return all.contains(letters(part)); });
  return same && !all.isEmpty() ? text : std::nullopt;
}

std::optional<QString> Reading::primary(PrimaryProof proof) {
  const auto text = windows_.primaryText(focus_.window, proof, deadline_);
  return text ? std::optional(withoutMarks(*text)) : std::nullopt;
}

}  // namespace

std::optional<QString> selectedText(FocusTracker& tracker, const Focus& focus) {
  return Reading(tracker, focus).read();
}

}  // namespace tavin::capture
