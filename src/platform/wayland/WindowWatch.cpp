#include "platform/wayland/WindowWatch.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tavin::wayland {
namespace {

constexpr std::uint32_t newestVersion = 3;
constexpr const char* ownAppId = "app.tavin.Tavin";
// More than anyone opens; a hostile program shall not fill the memory.
constexpr std::size_t mostWindows = 5000;

bool holdsState(const wl_array& states, std::uint32_t wanted) {
  const auto* begin = static_cast<const char*>(states.data);
  for (std::size_t at = 0; at + sizeof(wanted) <= states.size; at += sizeof(wanted)) {
    std::uint32_t state = 0;
    std::memcpy(&state, begin + at, sizeof(state));
    if (state == wanted)
      return true;
  }
  return false;
}

}  // namespace

struct WindowWatch::Window {
  Window(WindowWatch& owner, Owned<zwlr_foreign_toplevel_handle_v1> newHandle, std::uint64_t id)
      : watch(owner), handle(std::move(newHandle)), toplevel{id, {}} {}

  WindowWatch& watch;
  Owned<zwlr_foreign_toplevel_handle_v1> handle;
  Toplevel toplevel;
  bool toldActive = false;  // It counts once the compositor is done telling.
  bool active = false;
};

struct WindowWatch::Events {
  using Handle = zwlr_foreign_toplevel_handle_v1;

  static Window& window(void* self) { return *static_cast<Window*>(self); }
  static void title(void*, Handle*, const char*) {}
  static void appId(void* self, Handle*, const char* id) { window(self).toplevel.appId = id; }
  static void output(void*, Handle*, wl_output*) {}
  static void state(void* self, Handle*, wl_array* states) {
    window(self).toldActive = holdsState(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
  }
  static void done(void* self, Handle*) { window(self).watch.update(window(self)); }
  static void closed(void* self, Handle*) { window(self).watch.remove(window(self)); }
  static void parent(void*, Handle*, Handle*) {}

  static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
      .title = title,
      .app_id = appId,
      .output_enter = output,
      .output_leave = output,
      .state = state,
      .done = done,
      .closed = closed,
      .parent = parent,
  };
  static constexpr zwlr_foreign_toplevel_manager_v1_listener managerListener{
      .toplevel = [](void* self, zwlr_foreign_toplevel_manager_v1*,
                     Handle* handle) { static_cast<WindowWatch*>(self)->add(handle); },
      .finished = [](void*, zwlr_foreign_toplevel_manager_v1*) {},
  };
};

std::unique_ptr<WindowWatch> WindowWatch::create(Connection& connection) {
  auto manager = connection.bind<zwlr_foreign_toplevel_manager_v1>(
      zwlr_foreign_toplevel_manager_v1_interface, newestVersion);
  return manager ? std::unique_ptr<WindowWatch>(new WindowWatch(std::move(manager))) : nullptr;
}

WindowWatch::WindowWatch(Owned<zwlr_foreign_toplevel_manager_v1> manager)
    : manager_(std::move(manager)) {
  zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &Events::managerListener, this);
}

WindowWatch::~WindowWatch() = default;

Toplevel WindowWatch::active() const {
  for (const auto& window : windows_) {
    if (window->toplevel.id == activeId_)
      return window->toplevel;
  }
  return {};
}

bool WindowWatch::isOwn(const Toplevel& window) { return window.appId == ownAppId; }

void WindowWatch::primaryChanged(bool offered) {
  const Toplevel front = active();
  const bool known = offered && front.id != 0 && !isOwn(front);
  maker_ = known ? PrimaryMaker{front, true} : PrimaryMaker{};
}

void WindowWatch::add(zwlr_foreign_toplevel_handle_v1* handle) {
  Owned<zwlr_foreign_toplevel_handle_v1> owned(handle);
  if (windows_.size() == mostWindows)
    return;
  windows_.push_back(std::make_unique<Window>(*this, std::move(owned), ++lastId_));
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Events::listener, windows_.back().get());
}

void WindowWatch::remove(const Window& window) {
  if (window.toplevel.id == activeId_)
    activeId_ = 0;
  std::erase_if(windows_, [&window](const auto& entry) { return entry.get() == &window; });
}

void WindowWatch::update(Window& window) {
  const bool before = std::exchange(window.active, window.toldActive);
  const std::uint64_t id = window.toplevel.id;
  if (!window.active && id == activeId_)
    activeId_ = 0;
  if (!window.active || before)
    return;
  activeId_ = id;
  // A menu of ours takes the keyboard away for a moment, which changes no selection.
  if (id != maker_.window.id && !isOwn(window.toplevel))
    maker_.inFrontSince = false;
}

}  // namespace tavin::wayland
