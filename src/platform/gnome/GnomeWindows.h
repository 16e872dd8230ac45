#pragma once

#include <functional>
#include <memory>

#include "platform/windows/MenuNotice.h"
#include "platform/windows/WindowSystem.h"
#include "platform/x11/DisplayProbe.h"

namespace tavin::gnome {

// The front window and the PRIMARY selection on GNOME's Wayland: GNOME tells programs nothing of
// each other's windows, but those that run through Xwayland are known to its display. Any other is
// one window of which nothing is known. Work queue only, save menuCommandChosen().
class GnomeWindows final : public windows::WindowSystem {
 public:
  using Maker = std::function<std::unique_ptr<windows::WindowSystem>()>;

  // `make` gives what is known of Xwayland's windows, or null where it does not run. Once for each
  // time that it was started.
  explicit GnomeWindows(Maker make) : make_(std::move(make)), xwayland_(make_()) {}

  void menuCommandChosen() override { menu_.note(); }
  windows::FrontWindow frontWindow() override;
  std::set<std::int64_t> windowProcesses() override;
  std::optional<QString> primaryText(const windows::FrontWindow& window, PrimaryProof proof,
                                     Deadline deadline) override;

 private:
  bool answers() const { return xwayland_ && !silent_; }

  const Maker make_;
  std::unique_ptr<windows::WindowSystem> xwayland_;
  x11::DisplayProbe probe_;
  bool silent_ = false;  // At the last look.
  windows::MenuNotice menu_;
};

}  // namespace tavin::gnome
