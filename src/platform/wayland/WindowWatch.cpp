#include "platform/wayland/WindowWatch.h"

#include <atomic>

#include "platform/posix/ProcessFolder.h"
#include "platform/wayland/WindowSources.h"

namespace tavin::wayland {
namespace {

constexpr const char* ownAppId = "app.tavin.Tavin";
constexpr std::size_t mostWindows = 5000;

// Never given twice, nor by the compositor that comes after this one.
std::uint64_t newWindowId() {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

}  // namespace

std::unique_ptr<WindowWatch> WindowWatch::create(Connection& connection) {
  std::unique_ptr<WindowWatch> watch(new WindowWatch);
  watch->source_ = plasmaWindows(connection, *watch);
  if (!watch->source_.manager)
    watch->source_ = foreignToplevels(connection, *watch);
  return watch->source_.manager ? std::move(watch) : nullptr;
}

bool WindowWatch::isOwn(const Toplevel& window) {
  return window.appId == ownAppId || posix::showsOurWindows(window.processId);
}

std::set<std::int64_t> WindowWatch::processes() const {
  std::set<std::int64_t> all;
  for (const auto& window : windows_) {
    if (window.toplevel.processId != 0)
      all.insert(window.toplevel.processId);
  }
  return all;
}

void WindowWatch::primaryChanged(bool offered) {
  const bool known = offered && active_.id != 0 && !isOwn(active_);
  maker_ = known ? PrimaryMaker{active_, true} : PrimaryMaker{};
}

bool WindowWatch::isFull() const { return windows_.size() == mostWindows; }

ListedWindow& WindowWatch::add(std::shared_ptr<void> object) {
  ListedWindow& window = windows_.emplace_back(ListedWindow{*this, std::move(object)});
  window.toplevel.id = newWindowId();
  return window;
}

void ListedWindow::changed() { list.update(*this); }

void ListedWindow::closed() { list.remove(toplevel.id); }

void WindowWatch::update(const ListedWindow& window) {
  const Toplevel& told = window.toplevel;
  const bool wasActive = told.id == active_.id;
  if (window.active)
    active_ = told;
  else if (wasActive)
    active_ = {};
  // A menu of ours takes the keyboard away for a moment, which changes no selection.
  if (window.active && !wasActive && told.id != maker_.window.id && !isOwn(told))
    maker_.inFrontSince = false;
}

void WindowWatch::remove(std::uint64_t id) {
  windows_.remove_if([id](const ListedWindow& window) { return window.toplevel.id == id; });
  if (id == active_.id)
    active_ = {};
}

}  // namespace tavin::wayland
