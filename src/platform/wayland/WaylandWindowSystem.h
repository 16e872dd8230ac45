#pragma once

#include <memory>

#include "platform/wayland/Compositor.h"
#include "platform/windows/MenuNotice.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::wayland {

// The front window and the PRIMARY selection on Wayland: as the compositor tells it to taskbars,
// with the process where it is KWin or sway. Where it tells nobody, there is one window of which
// nothing is known. Work queue only, save menuCommandChosen().
class WaylandWindowSystem final : public windows::WindowSystem {
 public:
  explicit WaylandWindowSystem(std::shared_ptr<Compositor> compositor)
      : compositor_(std::move(compositor)) {}

  void menuCommandChosen() override { menu_.note(); }
  windows::FrontWindow frontWindow() override;
  std::set<std::int64_t> windowProcesses() override { return processes_; }
  std::optional<QString> primaryText(const windows::FrontWindow& window, PrimaryProof proof,
                                     Deadline deadline) override;

 private:
  void waitForMenu();
  static void restoreFocus(Deadline deadline);
  std::int64_t processOf(const Compositor::Front& front);

  const std::shared_ptr<Compositor> compositor_;
  std::set<std::int64_t> processes_;  // At the last look at the front window.
  windows::MenuNotice menu_;
};

}  // namespace tavin::wayland
