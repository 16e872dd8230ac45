#include "platform/atspi/FocusFinder.h"

#include <algorithm>

#include "platform/atspi/MatchRule.h"

namespace tavin::atspi {
namespace {

// Enough for any window that shows text; a larger tree is cut off there.
constexpr std::size_t mostVisited = 20'000;
// The others of the program would not be reached otherwise.
constexpr std::size_t mostChildren = 2'000;
constexpr std::size_t mostWindows = 500;
constexpr std::size_t mostFocused = 500;
constexpr std::size_t mostEditable = 500;
// Answers are kept until all of a batch are there, and each of them may be large.
constexpr std::size_t batchSize = 200;

std::vector<QDBusMessage> askEach(Bus& bus, const std::vector<ObjectRef>& objects,
                                  const char* interface, const char* member, Deadline deadline) {
  std::vector<Question> questions;
  for (const auto& object : objects) questions.push_back({object, interface, member});
  return bus.ask(questions, deadline);
}

// Adds the first ones of `more`, and of them only as many as make the list `most` long.
void append(std::vector<ObjectRef>& list, const std::vector<ObjectRef>& more, std::size_t most) {
  const std::size_t count = std::min(more.size(), most - std::min(most, list.size()));
  list.insert(list.end(), more.begin(), more.begin() + static_cast<std::ptrdiff_t>(count));
}

std::vector<ObjectRef> childrenOf(Bus& bus, const std::vector<ObjectRef>& objects, std::size_t most,
                                  Deadline deadline) {
  std::vector<ObjectRef> children;
  for (std::size_t i = 0; i < objects.size() && children.size() < most; i += batchSize) {
    const auto begin = objects.begin() + static_cast<std::ptrdiff_t>(i);
    const auto size = std::min(batchSize, objects.size() - i);
    const std::vector<ObjectRef> batch(begin, begin + static_cast<std::ptrdiff_t>(size));
    if (deadline.passed())
      break;
    for (const auto& answer : askEach(bus, batch, "Accessible", "GetChildren", deadline))
      append(children, objectsIn(answer), std::min(most, children.size() + mostChildren));
  }
  return children;
}

// Goes down level by level, all objects of a level at once. The whole window: toolkits give the
// focus to objects beside the one that is meant.
std::vector<ObjectRef> walkToFocus(Bus& bus, const ObjectRef& window, Deadline deadline) {
  std::vector<ObjectRef> found;
  std::vector<ObjectRef> level{window};
  std::size_t seen = 0;
  while (!level.empty() && seen < mostVisited && !deadline.passed()) {
    seen += level.size();
    const auto answers = askEach(bus, level, "Accessible", "GetState", deadline);
    std::vector<ObjectRef> visible;
    for (std::size_t i = 0; i < level.size(); ++i) {
      const States states = statesIn(answers[i]);
      if (states.has(States::focused))
        found.push_back(level[i]);
      if (states.has(States::visible) || states.has(States::showing))
        visible.push_back(level[i]);
    }
    level = childrenOf(bus, visible, mostVisited - std::min(mostVisited, seen), deadline);
  }
  return found;
}

Question focusedIn(const ObjectRef& window) {
  return {window, "Collection", "GetMatches", matchesWithState(States::focused)};
}

std::vector<QDBusMessage> askForFocused(Bus& bus, const std::vector<ObjectRef>& windows,
                                        Deadline deadline) {
  std::vector<Question> questions;
  for (const auto& window : windows) questions.push_back(focusedIn(window));
  return bus.ask(questions, deadline);
}

// `answers` are those of the windows' Collections.
std::vector<ObjectRef> focusedBelow(Bus& bus, const std::vector<ObjectRef>& windows,
                                    std::vector<QDBusMessage> answers, FocusSearch& search,
                                    Deadline deadline) {
  std::vector<ObjectRef> found;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    // A browser that has just opened a page takes its time; a second message may still make it.
    if (isLate(answers[i]) && !deadline.passed())
      answers[i] = bus.ask(focusedIn(windows[i]), deadline);
    if (isAnswer(answers[i])) {
      append(found, objectsIn(answers[i]), mostFocused);
    } else if (!isLate(answers[i])) {
      search.walked = true;  // The program has no Collection.
      append(found, walkToFocus(bus, windows[i], deadline), mostFocused);
    }
  }
  return found;
}

bool isPassword(Bus& bus, const FocusedObject& focus, Deadline deadline) {
  if (focus.role == Role::passwordText)
    return true;
  if (!focus.hasText || focus.characters == 0)
    return false;
  std::vector<Question> questions{{focus.object, "Text", "GetText", {0, 1}}};
  if (!focus.parent.isNull())
    questions.push_back({focus.parent, "Accessible", "GetRole"});
  const auto answers = bus.ask(questions, deadline);
  // The mark of a hidden text: it has characters, but they are not told.
  const auto& first = answers.front();
  const bool hidesItsText = isAnswer(first) && valueIn(first).toString().isEmpty();
  const bool partOfPasswordField =
      !focus.parent.isNull() &&
      (isLate(answers.back()) || roleIn(answers.back()) == Role::passwordText);
  return hidesItsText || partOfPasswordField;
}

// Whoever does not tell its role in time may be a password field.
std::vector<FocusedObject> describe(Bus& bus, const std::vector<ObjectRef>& objects,
                                    Deadline deadline) {
  std::vector<Question> questions;
  for (const auto& object : objects) {
    questions.push_back({object, "Accessible", "GetRole"});
    questions.push_back({object, "Accessible", "GetState"});
    questions.push_back({object, "Text", "GetNSelections"});
    questions.push_back(property(object, "Text", "CharacterCount"));
    questions.push_back(property(object, "Accessible", "Parent"));
  }
  const auto answers = bus.ask(questions, deadline);
  std::vector<FocusedObject> described;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const auto* answer = &answers[5 * i];
    described.push_back({.object = objects[i],
                         .parent = objectIn(answer[4]),
                         .role = isLate(answer[0]) ? Role::passwordText : roleIn(answer[0]),
                         .states = statesIn(answer[1]),
                         .hasText = isAnswer(answer[2]),
                         .characters = valueIn(answer[3]).toInt(),
                         .selections = valueIn(answer[2]).toInt()});
  }
  return described;
}

// A later one is deeper.
std::optional<FocusedObject> choose(const std::vector<FocusedObject>& objects) {
  const auto score = [](const FocusedObject& object) {
    return object.characters > 0 || object.selections > 0 ? 2 : object.hasText ? 1 : 0;
  };
  std::optional<FocusedObject> best;
  for (const auto& object : objects) {
    if (!best || score(object) >= score(*best))
      best = object;
  }
  return best;
}

// A program that is busy laying out a large text is late in telling who has the focus. Then the one
// editable text of its active window that has a selection is meant.
std::optional<FocusedObject> soleSelection(Bus& bus, const FocusSearch& search, Deadline deadline) {
  if (search.walked || search.windows.empty())
    return std::nullopt;
  const auto editable = bus.ask(Question{search.windows.front(), "Collection", "GetMatches",
                                         matchesWithState(States::editable)},
                                deadline);
  const auto objects = objectsIn(editable);
  if (objects.size() > mostEditable)
    return std::nullopt;
  auto texts = describe(bus, objects, deadline);
  std::erase_if(texts, [](const FocusedObject& text) { return text.selections == 0; });
  return texts.size() == 1 ? std::optional(texts.front()) : std::nullopt;
}

}  // namespace

FocusSearch findFocus(Bus& bus, const ObjectRef& program, Deadline deadline) {
  FocusSearch search;
  const auto windows = childrenOf(bus, {program}, mostWindows, deadline);
  std::vector<Question> questions;
  for (const auto& window : windows) questions.push_back({window, "Accessible", "GetState"});
  // A sole window is asked for everything at once; of several only the active ones are searched.
  const bool sole = windows.size() == 1;
  if (sole)
    questions.push_back(focusedIn(windows.front()));
  const auto answers = bus.ask(questions, deadline);
  std::vector<ObjectRef> others;
  for (std::size_t i = 0; i < windows.size(); ++i)
    (statesIn(answers[i]).has(States::active) ? search.windows : others).push_back(windows[i]);
  const auto focused = [&](const std::vector<ObjectRef>& some) {
    return sole ? std::vector{answers.back()} : askForFocused(bus, some, deadline);
  };
  auto found = focusedBelow(bus, search.windows, focused(search.windows), search, deadline);
  search.inActiveWindow = !found.empty();
  if (found.empty())
    found = focusedBelow(bus, others, focused(others), search, deadline);
  search.focus =
      found.empty() ? soleSelection(bus, search, deadline) : choose(describe(bus, found, deadline));
  append(search.windows, others, mostWindows);
  if (search.focus)
    search.focus->password = isPassword(bus, *search.focus, deadline);
  return search;
}

}  // namespace tavin::atspi
