#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// A program's window as the compositor tells it to taskbars.
struct Toplevel {
  std::uint64_t id = 0;  // Never given twice; 0 where there is none.
  std::string appId;
};

// Knows which window is the active one, and remembers in which of them the present PRIMARY
// selection was made: on Wayland it has no owner, so the program that was in front when it changed
// counts as the one that made it. Used by the thread of its connection alone.
class WindowWatch {
 public:
  // Null where the compositor does not tell. `connection` must outlive it.
  static std::unique_ptr<WindowWatch> create(Connection& connection);
  ~WindowWatch();

  // The active window; id 0 where none is, as while a panel or a lock screen has the keyboard.
  Toplevel active() const;
  // Whether it is a window of ours.
  static bool isOwn(const Toplevel& window);

  struct PrimaryMaker {
    Toplevel window;            // id 0 where it is not known.
    bool inFrontSince = false;  // No other window was active since.
  };
  const PrimaryMaker& primaryMaker() const { return maker_; }
  // To be called after each change of PRIMARY; `offered` is whether it holds anything.
  void primaryChanged(bool offered);

 private:
  struct Window;
  struct Events;

  explicit WindowWatch(Owned<zwlr_foreign_toplevel_manager_v1> manager);
  void add(zwlr_foreign_toplevel_handle_v1* handle);
  void remove(const Window& window);
  void update(Window& window);

  const Owned<zwlr_foreign_toplevel_manager_v1> manager_;
  std::vector<std::unique_ptr<Window>> windows_;
  std::uint64_t lastId_ = 0;
  std::uint64_t activeId_ = 0;
  PrimaryMaker maker_;
};

}  // namespace tavin::wayland
