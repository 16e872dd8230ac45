#include "platform/atspi/TextGatherer.h"

#include <algorithm>
#include <set>

namespace tavin::atspi {
namespace {

constexpr QChar objectMark(0xfffc);
constexpr QChar fillerMark(0xfeff);
constexpr int noLink = -1;  // As programs answer for a mark that stands for no object.
// Selections of one object; beyond this a program is making fun of us.
constexpr int mostSelections = 1000;
// The same for all objects of a text together, and for the marks in the text of one level.
constexpr std::size_t mostRanges = 20'000;
constexpr std::size_t mostMarks = 20'000;

// Whether an object of that role stands within a line of text.
bool isInline(Role role) {
  static const std::set<Role> roles{Role::link,  Role::staticText,      Role::label,
                                    Role::text,  Role::subscript,       Role::superscript,
                                    Role::image, Role::contentDeletion, Role::contentInsertion,
                                    Role::mark,  Role::suggestion};
  return roles.contains(role);
}

}  // namespace

QString withoutMarks(const QString& text) {
  if (!text.contains(objectMark) && !text.contains(fillerMark))
    return text;  // As nearly always; a text may be long.
  QString clean;
  clean.reserve(text.size());
  for (const QChar c : text) {
    const bool filler = c == fillerMark && !clean.isEmpty() && clean.back().isLowSurrogate();
    if (c != objectMark && !filler)
      clean += c;
  }
  return clean;
}

GatheredText TextGatherer::gather(const ObjectRef& object) {
  nodes_.clear();
  nodes_.push_back({object, Role::unknown, {}, {}});
  result_ = {};
  ranges_ = 0;
  std::vector<std::size_t> level{0};
  while (!level.empty() && !deadline_.passed()) level = resolve(readSelections(level));
  result_.text = assemble(0);
  result_.complete = result_.complete && !deadline_.passed();
  return result_;
}

// The questions for the selected texts of the nodes, and which node each of them is of. Nearly
// every selection is its object's only one, so the first is asked for along with their number.
std::vector<Question> TextGatherer::selectedTexts(const std::vector<std::size_t>& nodes,
                                                  std::vector<std::size_t>& owners) {
  std::vector<Question> firsts;
  for (const std::size_t node : nodes) {
    firsts.push_back({nodes_[node].object, "Text", "GetNSelections"});
    firsts.push_back({nodes_[node].object, "Text", "GetSelection", {0}});
  }
  const auto firstAnswers = bus_.ask(firsts, deadline_);
  std::vector<int> counts;
  std::vector<Question> others;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const int count = valueIn(firstAnswers[2 * i]).toInt();
    const auto room = static_cast<int>(mostRanges - std::min(mostRanges, ranges_));
    counts.push_back(std::clamp(count, 0, std::min(mostSelections, room)));
    result_.complete = result_.complete && counts.back() >= count && !isLate(firstAnswers[2 * i]);
    ranges_ += static_cast<std::size_t>(counts.back());
    for (int selection = 1; selection < counts.back(); ++selection)
      others.push_back({nodes_[nodes[i]].object, "Text", "GetSelection", {selection}});
  }
  const auto otherAnswers = bus_.ask(others, deadline_);
  std::vector<Question> texts;
  auto other = otherAnswers.begin();
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    for (int selection = 0; selection < counts[i]; ++selection) {
      const auto& range = selection == 0 ? firstAnswers[2 * i + 1] : *other++;
      result_.complete = result_.complete && isAnswer(range);
      if (!isAnswer(range))
        continue;
      texts.push_back({nodes_[nodes[i]].object, "Text", "GetText", range.arguments()});
      owners.push_back(nodes[i]);
    }
  }
  return texts;
}

// Reads the selected text of the nodes and returns the marks in it.
std::vector<TextGatherer::Mark> TextGatherer::readSelections(
    const std::vector<std::size_t>& nodes) {
  std::vector<std::size_t> owners;
  const std::vector<Question> texts = selectedTexts(nodes, owners);
  const auto textAnswers = bus_.ask(texts, deadline_);
  std::vector<Mark> marks;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    result_.complete = result_.complete && isAnswer(textAnswers[i]);
    auto& pieces = nodes_[owners[i]].pieces;
    if (!pieces.empty())
      pieces.push_back({"\n"});
    split(owners[i], valueIn(textAnswers[i]).toString(), texts[i].arguments.value(0).toInt(),
          marks);
  }
  return marks;
}

// Offsets count code points here: the toolkits that leave marks in a text all do.
void TextGatherer::split(std::size_t node, const QString& text, int start,
                         std::vector<Mark>& marks) {
  auto& pieces = nodes_[node].pieces;
  int offset = start;
  for (qsizetype from = 0; from < text.size();) {
    const qsizetype mark = text.indexOf(objectMark, from);
    const QString stretch = text.sliced(from, (mark < 0 ? text.size() : mark) - from);
    if (!stretch.isEmpty()) {
      pieces.push_back({stretch});
      result_.parts << withoutMarks(stretch);
    }
    if (mark < 0)
      break;
    if (marks.size() == mostMarks) {
      result_.complete = false;
      break;
    }
    offset += static_cast<int>(
        std::count_if(stretch.begin(), stretch.end(), [](QChar c) { return !c.isLowSurrogate(); }));
    marks.push_back({node, pieces.size(), offset});
    pieces.push_back({});
    ++offset;
    from = mark + 1;
  }
}

// Finds the objects that the marks stand for and returns their nodes.
std::vector<std::size_t> TextGatherer::resolve(const std::vector<Mark>& allMarks) {
  const std::size_t room = mostObjects_ - std::min(mostObjects_, nodes_.size() - 1);
  const std::size_t count = deadline_.passed() ? 0 : std::min(room, allMarks.size());
  result_.complete = result_.complete && count == allMarks.size();
  std::vector<Question> questions;
  for (std::size_t i = 0; i < count; ++i) {
    const Mark& mark = allMarks[i];
    questions.push_back({nodes_[mark.node].object, "Hypertext", "GetLinkIndex", {mark.offset}});
  }
  auto answers = bus_.ask(questions, deadline_);
  std::vector<Mark> indexed;
  questions.clear();
  for (std::size_t i = 0; i < count; ++i) {
    const int index = isAnswer(answers[i]) ? valueIn(answers[i]).toInt() : noLink;
    result_.complete = result_.complete && !isLate(answers[i]);
    if (index <= noLink)
      continue;  // A mark that the author typed.
    indexed.push_back(allMarks[i]);
    questions.push_back({nodes_[allMarks[i].node].object, "Hypertext", "GetLink", {index}});
  }
  answers = bus_.ask(questions, deadline_);
  std::vector<Mark> marks;
  questions.clear();
  for (std::size_t i = 0; i < indexed.size(); ++i) {
    const ObjectRef link = objectIn(answers[i]);
    result_.complete = result_.complete && !isLate(answers[i]);
    if (link.isNull())
      continue;  // The same, or a list's bullet.
    marks.push_back(indexed[i]);
    questions.push_back({link, "Hyperlink", "GetObject", {0}});
  }
  answers = bus_.ask(questions, deadline_);
  std::vector<std::size_t> level;
  questions.clear();
  for (std::size_t i = 0; i < marks.size(); ++i) {
    const ObjectRef object = objectIn(answers[i]);
    result_.complete = result_.complete && !object.isNull();
    if (object.isNull())
      continue;
    nodes_[marks[i].node].pieces[marks[i].piece].child = nodes_.size();
    level.push_back(nodes_.size());
    nodes_.push_back({object, Role::unknown, {}, {}});
    questions.push_back({object, "Accessible", "GetRole"});
    questions.push_back(property(object, "Accessible", "Name"));
  }
  answers = bus_.ask(questions, deadline_);
  for (std::size_t i = 0; i < level.size(); ++i) {
    const bool late = isLate(answers[2 * i]);
    result_.complete = result_.complete && !late;
    nodes_[level[i]].role = late ? Role::passwordText : roleIn(answers[2 * i]);
    nodes_[level[i]].name = valueIn(answers[2 * i + 1]).toString();
  }
  std::erase_if(level, [&](std::size_t node) { return nodes_[node].role == Role::passwordText; });
  return level;
}

QString TextGatherer::assemble(std::size_t index) {
  const Node& node = nodes_[index];
  if (node.role == Role::image)
    return node.name;
  QString text;
  bool lineEnds = false;
  bool afterCell = false;
  for (const Piece& piece : node.pieces) {
    const QString part = piece.child == 0 ? withoutMarks(piece.text) : assemble(piece.child);
    if (part.isEmpty())
      continue;
    const Role role = piece.child == 0 ? Role::text : nodes_[piece.child].role;
    const bool cell = role == Role::tableCell;
    const bool block = !isInline(role) && !cell;
    if (cell && afterCell)
      text += '\t';
    else if ((block || lineEnds) && !text.isEmpty() && !text.endsWith('\n') &&
             !part.startsWith('\n'))
      text += '\n';
    text += part;
    lineEnds = block;
    afterCell = cell;
  }
  return text;
}

}  // namespace tavin::atspi
