#pragma once

#include <atomic>
#include <memory>

#include "platform/atspi/WindowSystem.h"

namespace tavin::gnome {

// The front window and the PRIMARY selection on GNOME's Wayland: GNOME tells programs nothing of
// each other's windows, but those that run through Xwayland are known to its display. Any other is
// one window of which nothing is known. Work queue only, save menuCommandChosen().
class GnomeWindows final : public atspi::WindowSystem {
 public:
  // `xwayland` may be null.
  explicit GnomeWindows(std::unique_ptr<atspi::WindowSystem> xwayland)
      : xwayland_(std::move(xwayland)) {}

  void menuCommandChosen() override { menuIsClosing_ = true; }
  atspi::FrontWindow frontWindow() override;
  std::set<std::int64_t> windowProcesses() override;
  std::optional<QString> primaryText(const atspi::FrontWindow& window, PrimaryProof proof,
                                     Deadline deadline) override;

 private:
  const std::unique_ptr<atspi::WindowSystem> xwayland_;
  std::atomic<bool> menuIsClosing_ = false;
};

}  // namespace tavin::gnome
