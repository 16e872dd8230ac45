#include "platform/wayland/WindowWatch.h"

#include <atomic>

#include "platform/posix/ProcessFolder.h"
#include "platform/wayland/ForeignToplevels.h"
#include "platform/wayland/PlasmaWindows.h"

namespace tavin::wayland {
namespace {

constexpr const char* ownAppId = "app.tavin.Tavin";

}  // namespace

std::unique_ptr<WindowWatch> WindowWatch::create(Connection& connection) {
  std::unique_ptr<WindowWatch> watch(new WindowWatch);
  watch->source_ = PlasmaWindows::create(connection, *watch);
  if (!watch->source_)
    watch->source_ = ForeignToplevels::create(connection, *watch);
  return watch->source_ ? std::move(watch) : nullptr;
}

WindowWatch::~WindowWatch() = default;

Toplevel WindowWatch::active() const {
  const auto found = windows_.find(activeId_);
  return found == windows_.end() ? Toplevel{} : found->second;
}

// Nor by the compositor that comes after this one.
std::uint64_t WindowWatch::newId() {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

bool WindowWatch::isOwn(const Toplevel& window) {
  return window.appId == ownAppId || posix::showsOurWindows(window.processId);
}

std::set<std::int64_t> WindowWatch::processes() const {
  std::set<std::int64_t> all;
  for (const auto& [id, window] : windows_) {
    if (window.processId != 0)
      all.insert(window.processId);
  }
  return all;
}

void WindowWatch::primaryChanged(bool offered) {
  const Toplevel front = active();
  const bool known = offered && front.id != 0 && !isOwn(front);
  maker_ = known ? PrimaryMaker{front, true} : PrimaryMaker{};
}

void WindowWatch::update(const Toplevel& window, bool active) {
  windows_[window.id] = window;
  if (active == (window.id == activeId_))
    return;
  activeId_ = active ? window.id : 0;
  // A menu of ours takes the keyboard away for a moment, which changes no selection.
  if (active && window.id != maker_.window.id && !isOwn(window))
    maker_.inFrontSince = false;
}

void WindowWatch::remove(std::uint64_t id) {
  windows_.erase(id);
  if (id == activeId_)
    activeId_ = 0;
}

}  // namespace tavin::wayland
