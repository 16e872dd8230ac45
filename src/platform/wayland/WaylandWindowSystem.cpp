#include "platform/wayland/WaylandWindowSystem.h"

#include <algorithm>
#include <cctype>
#include <thread>

#include "platform/wayland/ReadClipboard.h"
#include "platform/wayland/SwayTree.h"
#include "platform/windows/ProgramKind.h"

namespace tavin::wayland {
namespace {

constexpr double secondsForMenu = 0.5;
constexpr double secondsForFocus = 0.15;
constexpr auto menuInterval = std::chrono::milliseconds(5);
constexpr double secondsForFront = 0.3;
constexpr double secondsForTree = 0.3;
constexpr std::uint64_t unknownWindow = ~std::uint64_t{0};

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

windows::FrontWindow WaylandWindowSystem::frontWindow() {
  windows::FrontWindow front;
  front.unknown = true;
  const bool afterMenu = menu_.take();
  compositor_->renew();
  if (!compositor_->tellsWindows()) {
    front.id = unknownWindow;
    front.afterMenu = afterMenu;
    return front;
  }
  if (afterMenu)
    waitForMenu();
  const auto now = compositor_->front(Deadline::in(secondsForFront));
  if (!now || now->window.id == 0)
    return {};
  const std::vector<std::string> names{lowerCase(now->window.appId)};
  front.id = now->window.id;
  front.processId = processOf(*now);
  // A name is what the user gives it; a terminal that drops down has often one of its own.
  front.unknown = front.processId == 0;
  windows::setProgramKind(front, names, processes_);
  return front;
}

void WaylandWindowSystem::waitForMenu() {
  const Deadline deadline = Deadline::in(secondsForMenu);
  Deadline untilHelp = Deadline::in(secondsForFocus);
  while (!deadline.passed()) {
    const auto now = compositor_->front(deadline);
    if (now && now->window.id != 0 && !WindowWatch::isOwn(now->window))
      return;
    if (now && now->window.id == 0 && untilHelp.passed()) {
      restoreFocus(deadline);
      untilHelp = Deadline::in(secondsForFocus);
    }
    std::this_thread::sleep_for(menuInterval);
  }
}

// sway from 1.10 on gives the keyboard to no window when a panel's menu has closed.
void WaylandWindowSystem::restoreFocus(Deadline deadline) {
  const auto tree = readSwayTree(deadline);
  if (tree && tree->lastFocused != 0)
    focusSwayWindow(tree->lastFocused, deadline);
}

std::int64_t WaylandWindowSystem::processOf(const Compositor::Front& front) {
  processes_ = front.processes;
  if (front.window.processId != 0)
    return front.window.processId;
  const auto tree = readSwayTree(Deadline::in(secondsForTree));
  processes_ = tree ? tree->processes : std::set<std::int64_t>();
  // Another window may have come to the front meanwhile.
  return tree && tree->focusedAppId == front.window.appId ? tree->focusedProcess : 0;
}

std::optional<QString> WaylandWindowSystem::primaryText(const windows::FrontWindow& window,
                                                        PrimaryProof proof, Deadline deadline) {
  const auto now = compositor_->front(deadline.orIn(secondsForFront));
  if (!now || now->window.id != window.id || now->primaryMaker.window.id == 0)
    return std::nullopt;
  const auto& maker = now->primaryMaker;
  const bool sameWindow = maker.window.id == window.id;
  // Several terminals have one name, and each shows the selections of its own.
  const bool sameProgram =
      sameWindow || (!window.terminal && maker.window.appId == now->window.appId);
  if (proof == PrimaryProof::takenInFront ? !sameWindow || !maker.inFrontSince : !sameProgram)
    return std::nullopt;
  return readText(*compositor_->reader(), SelectionKind::primary, deadline);
}

}  // namespace tavin::wayland
