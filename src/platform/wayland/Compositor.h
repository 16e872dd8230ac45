#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/wayland/ClipboardServer.h"
#include "platform/wayland/SelectionReader.h"
#include "platform/wayland/WindowWatch.h"

namespace tavin::wayland {

// What one connection to the compositor serves, put together, and the thread that serves it.
// Shared by the back ends of capture; any of them may outlive the others.
class Compositor {
 public:
  // Null without a compositor that has data control.
  static std::shared_ptr<Compositor> connect(double transferIdleSeconds = 10);
  ~Compositor();

  ClipboardServer& clipboard() { return clipboard_; }
  SelectionReader& reader() { return reader_; }
  // The protocol that brings the clipboard, for people.
  const std::string& clipboardName() const { return control_->name(); }

  // Whether it tells which window is active.
  bool tellsWindows() const { return windows_ != nullptr; }
  // The protocol that tells it, for people.
  std::string windowsName() const { return windows_ ? windows_->name() : "none"; }
  struct Front {
    Toplevel window;  // The active one.
    WindowWatch::PrimaryMaker primaryMaker;
    std::set<std::int64_t> processes;  // Of all windows, where it tells.
  };
  // Up to date. None where the compositor does not answer in time. Any thread.
  std::optional<Front> front(Deadline deadline);

 private:
  Compositor(std::unique_ptr<Connection> connection, std::unique_ptr<DataControl> control,
             double transferIdleSeconds);

  const std::unique_ptr<Connection> connection_;
  const std::unique_ptr<DataControl> control_;
  const std::unique_ptr<WindowWatch> windows_;
  EventThread thread_;
  ClipboardServer clipboard_;
  SelectionReader reader_;
};

}  // namespace tavin::wayland
