// The selection by a copy that the focused program is made to do.
#include <unistd.h>

#include "platform/Deadline.h"
#include "platform/Platform.h"
#include "selection/Selection.h"

namespace tavin {
namespace {

constexpr double modifierWait = 0.5;  // Seconds.
constexpr double copyWait = 0.4;
constexpr useconds_t pollInterval = 10'000;  // Microseconds.
constexpr std::uint16_t ansiCKey = 8;
// Not Caps Lock and not the function key: neither changes what Command-C means.
constexpr std::uint64_t heldModifiers =
    EventFlags::shift | EventFlags::control | EventFlags::option | EventFlags::command;

}  // namespace

std::optional<QString> Selection::viaCopy() const {
  const auto snapshot = pasteboard_.pasteboardItems();
  // Contents that could not be read could not be given back either.
  if (!snapshot)
    return std::nullopt;
  const std::int64_t startingCount = pasteboard_.changeCount();
  waitForModifiersUp();
  postCommandC();
  if (!waitForCopy(startingCount))
    return std::nullopt;
  auto text = pasteboard_.string();
  pasteboard_.clearContents();
  if (!snapshot->empty())
    pasteboard_.writeObjects(*snapshot);
  return unlessBlank(std::move(text));
}

void Selection::waitForModifiersUp() const {
  const Deadline deadline = Deadline::in(modifierWait);
  while ((keyboard_.flagsState() & heldModifiers) != 0 && !deadline.passed())
    ::usleep(pollInterval);
}

void Selection::postCommandC() const {
  postKey(true);
  postKey(false);
}

void Selection::postKey(bool down) const {
  const auto event = keyboard_.createKeyboardEvent(ansiCKey, down);
  if (!event)
    return;
  event->setFlags(EventFlags::command);
  event->post();
}

bool Selection::waitForCopy(std::int64_t startingCount) const {
  const Deadline deadline = Deadline::in(copyWait);
  while (pasteboard_.changeCount() == startingCount && !deadline.passed()) ::usleep(pollInterval);
  return pasteboard_.changeCount() != startingCount;
}

}  // namespace tavin
