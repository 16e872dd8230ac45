#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <set>
#include <string>

#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// A program's window as the compositor tells it to taskbars.
struct Toplevel {
  std::uint64_t id = 0;  // Never given twice; 0 where there is none.
  std::string appId;
  std::int64_t processId = 0;  // 0 where the compositor does not tell.
};

inline constexpr const char* plasmaWindowsName = "plasma-window-management";

class WindowWatch;

// A window in the list, as its source tells of it.
struct ListedWindow {
  // What the source has told counts from now on.
  void changed();
  // Ends it.
  void closed();

  WindowWatch& list;
  const std::shared_ptr<void> object;  // The compositor's.
  Toplevel toplevel = {};
  bool active = false;
};

// One of the protocols for taskbars.
struct WindowSource {
  std::string name;  // For the log.
  std::shared_ptr<void> manager;
};

// The one list of the windows. Knows which window is the active one, and remembers in which of them
// the present PRIMARY selection was made: on Wayland it has no owner, so the program that was in
// front when it changed counts as the one that made it. Used by the thread of its connection alone.
class WindowWatch {
 public:
  // Null where the compositor does not tell. `connection` must outlive it.
  static std::unique_ptr<WindowWatch> create(Connection& connection);
  WindowWatch(const WindowWatch&) = delete;
  WindowWatch& operator=(const WindowWatch&) = delete;

  const std::string& name() const { return source_.name; }
  // The active window; id 0 where none is, as while a panel or a lock screen has the keyboard.
  const Toplevel& active() const { return active_; }
  // Whether it is a window of ours.
  static bool isOwn(const Toplevel& window);
  // Of the windows, where the compositor tells; else empty.
  std::set<std::int64_t> processes() const;

  struct PrimaryMaker {
    Toplevel window;            // id 0 where it is not known.
    bool inFrontSince = false;  // No other window was active since.
  };
  const PrimaryMaker& primaryMaker() const { return maker_; }
  // To be called after each change of PRIMARY; `offered` is whether it holds anything.
  void primaryChanged(bool offered);

  // For the source. More than anyone opens are not taken: a hostile program shall not fill the
  // memory. A window stays where it is until it is closed.
  bool isFull() const;
  ListedWindow& add(std::shared_ptr<void> object);

 private:
  friend ListedWindow;
  WindowWatch() = default;
  void update(const ListedWindow& window);
  void remove(std::uint64_t id);

  WindowSource source_;
  std::list<ListedWindow> windows_;
  Toplevel active_;
  PrimaryMaker maker_;
};

}  // namespace tavin::wayland
