#include "platform/capture/FocusTracker.h"

#include <algorithm>
#include <thread>

#include "platform/atspi/MatchRule.h"
#include "platform/capture/ProgramFinder.h"
#include "platform/posix/ProcessFolder.h"
#include "platform/windows/ProgramKind.h"

namespace tavin::capture {
namespace {

using namespace atspi;

constexpr double secondsToFind = 0.6;
constexpr double secondsForMenu = 0.5;
constexpr auto menuInterval = std::chrono::milliseconds(10);
// A copy follows the look at accessibility after at most half a second of waiting for the
// modifier keys, and the text that was read in between.
constexpr double secondsFresh = 3;
// Enough objects to see whether a text is among them.
constexpr int mostTexts = 50;

}  // namespace

Focus FocusTracker::look() {
  const windows::FrontWindow window = windows_->frontWindow();
  return window.afterMenu ? waitForProgram(window) : lookInto(window);
}

// The program that has the keyboard again once the menu is gone.
Focus FocusTracker::waitForProgram(windows::FrontWindow window) {
  const Deadline deadline = Deadline::in(secondsForMenu);
  while (true) {
    Focus focus = lookInto(window);
    const bool found = !window.unknown || (focus.program && !isOwn(*focus.program));
    if (found || deadline.passed())
      return focus;
    std::this_thread::sleep_for(menuInterval);
    window = windows_->frontWindow();
  }
}

bool FocusTracker::isOwn(const atspi::ObjectRef& program) {
  return posix::showsOurWindows(bus_.processIds({program}, Deadline::in(secondsToFind)).front());
}

Focus FocusTracker::lookInto(const windows::FrontWindow& window) {
  const Deadline deadline = Deadline::in(secondsToFind);
  last_ = {};
  last_.window = window;
  if (window.id != 0 && bus_.connect(deadline)) {
    if (const auto found = findProgram(bus_, *windows_, window, deadline)) {
      last_.program = found->program;
      last_.object = found->search.focus;
      if (window.unknown)
        identify(last_.window, found->program, deadline);
      const bool text = last_.object && last_.object->hasText;
      last_.showsNoText = !text && showsNoText(found->search, deadline);
    }
  }
  lastIsFresh_ = Deadline::in(secondsFresh);
  return last_;
}

// What the window system does not tell, the program itself does.
void FocusTracker::identify(windows::FrontWindow& window, const atspi::ObjectRef& program,
                            Deadline deadline) {
  const std::int64_t process = bus_.processIds({program}, deadline).front();
  if (process == 0)
    return;
  const QString name =
      valueIn(bus_.ask(property(program, "Accessible", "Name"), deadline)).toString().toLower();
  window.processId = process;
  window.unknown = false;
  windows::setProgramKind(window, {name.toStdString()}, windows_->windowProcesses());
}

// Asked only where Collection can answer; labels do not count.
bool FocusTracker::showsNoText(const atspi::FocusSearch& search, Deadline deadline) {
  if (search.walked || search.windows.empty())
    return false;
  const auto answer = bus_.ask(Question{search.windows.front(), "Collection", "GetMatches",
                                        matchesWithInterface("Text", mostTexts)},
                               deadline);
  if (!isAnswer(answer))
    return false;
  std::vector<Question> questions;
  for (const auto& object : objectsIn(answer))
    questions.push_back({object, "Accessible", "GetRole"});
  const auto roles = bus_.ask(questions, deadline);
  return std::all_of(roles.begin(), roles.end(),
                     [](const QDBusMessage& role) { return roleIn(role) == Role::label; });
}

bool FocusTracker::mayReceiveCopy() {
  const windows::FrontWindow window = windows_->frontWindow();
  if (window.id == 0 || window.terminal || window.withoutCopyKey)
    return false;
  // All windows of which nothing is known look alike.
  if (window.unknown || lastIsFresh_.passed() || last_.window.id != window.id)
    lookInto(window);
  if (last_.window.unknown || last_.window.withoutCopyKey)
    return false;
  return !last_.isTerminal() && !last_.isPassword();
}

}  // namespace tavin::capture
