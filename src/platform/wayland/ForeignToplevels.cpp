#include "platform/wayland/ForeignToplevels.h"

#include <cstring>
#include <utility>

namespace tavin::wayland {
namespace {

constexpr std::uint32_t newestVersion = 3;

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

struct ForeignToplevels::Window {
  Window(ForeignToplevels& owner, Owned<zwlr_foreign_toplevel_handle_v1> newHandle)
      : list(owner), handle(std::move(newHandle)) {
    toplevel.id = WindowWatch::newId();
  }

  ForeignToplevels& list;
  Owned<zwlr_foreign_toplevel_handle_v1> handle;
  Toplevel toplevel;
  bool active = false;  // It counts once the compositor is done telling.
};

struct ForeignToplevels::Events {
  using Handle = zwlr_foreign_toplevel_handle_v1;

  static Window& window(void* self) { return *static_cast<Window*>(self); }
  static void title(void*, Handle*, const char*) {}
  static void appId(void* self, Handle*, const char* id) { window(self).toplevel.appId = id; }
  static void output(void*, Handle*, wl_output*) {}
  static void state(void* self, Handle*, wl_array* states) {
    window(self).active = holdsState(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
  }
  static void done(void* self, Handle*) {
    window(self).list.watch_.update(window(self).toplevel, window(self).active);
  }
  static void closed(void* self, Handle*) { window(self).list.remove(window(self)); }
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
                     Handle* handle) { static_cast<ForeignToplevels*>(self)->add(handle); },
      .finished = [](void*, zwlr_foreign_toplevel_manager_v1*) {},
  };
};

std::unique_ptr<ForeignToplevels> ForeignToplevels::create(Connection& connection,
                                                           WindowWatch& watch) {
  auto manager = connection.bind<zwlr_foreign_toplevel_manager_v1>(
      zwlr_foreign_toplevel_manager_v1_interface, newestVersion);
  return manager
             ? std::unique_ptr<ForeignToplevels>(new ForeignToplevels(std::move(manager), watch))
             : nullptr;
}

ForeignToplevels::ForeignToplevels(Owned<zwlr_foreign_toplevel_manager_v1> manager,
                                   WindowWatch& watch)
    : manager_(std::move(manager)), watch_(watch) {
  zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &Events::managerListener, this);
}

ForeignToplevels::~ForeignToplevels() = default;

void ForeignToplevels::add(zwlr_foreign_toplevel_handle_v1* handle) {
  Owned<zwlr_foreign_toplevel_handle_v1> owned(handle);
  if (windows_.size() == mostWindows)
    return;
  windows_.push_back(std::make_unique<Window>(*this, std::move(owned)));
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Events::listener, windows_.back().get());
}

void ForeignToplevels::remove(const Window& window) {
  watch_.remove(window.toplevel.id);
  std::erase_if(windows_, [&window](const auto& entry) { return entry.get() == &window; });
}

}  // namespace tavin::wayland
