#pragma once

#include <cstdint>
#include <map>
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

// One of the protocols for taskbars; it tells a WindowWatch what happens to the windows.
class WindowSource {
 public:
  // More than anyone opens; a hostile program shall not fill the memory.
  static constexpr std::size_t mostWindows = 5000;

  virtual ~WindowSource() = default;
  // Of the protocol, for people.
  virtual std::string name() const = 0;
};

// Knows which window is the active one, and remembers in which of them the present PRIMARY
// selection was made: on Wayland it has no owner, so the program that was in front when it changed
// counts as the one that made it. Used by the thread of its connection alone.
class WindowWatch {
 public:
  // Null where the compositor does not tell. `connection` must outlive it.
  static std::unique_ptr<WindowWatch> create(Connection& connection);
  ~WindowWatch();

  std::string name() const { return source_->name(); }
  // The active window; id 0 where none is, as while a panel or a lock screen has the keyboard.
  Toplevel active() const;
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

  // For the source: a number for a new window; whatever is known of it; its end.
  static std::uint64_t newId();
  void update(const Toplevel& window, bool active);
  void remove(std::uint64_t id);

 private:
  WindowWatch() = default;

  std::unique_ptr<WindowSource> source_;
  std::map<std::uint64_t, Toplevel> windows_;
  std::uint64_t activeId_ = 0;
  PrimaryMaker maker_;
};

}  // namespace tavin::wayland
