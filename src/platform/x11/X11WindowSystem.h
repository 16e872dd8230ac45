#pragma once

#include <cstdint>
#include <memory>
#include <set>

#include "platform/windows/MenuNotice.h"
#include "platform/windows/WindowSystem.h"
#include "platform/x11/ActiveWindow.h"
#include "platform/x11/PrimaryWatch.h"
#include "platform/x11/SelectionReader.h"

namespace tavin::x11 {

// The front window and the PRIMARY selection on X11. Work queue only, save menuCommandChosen().
class X11WindowSystem final : public windows::WindowSystem {
 public:
  X11WindowSystem(std::unique_ptr<SelectionReader> reader, std::unique_ptr<PrimaryWatch> watch);

  void menuCommandChosen() override { menu_.note(); }
  windows::FrontWindow frontWindow() override;
  std::set<std::int64_t> windowProcesses() override;
  std::optional<QString> primaryText(const windows::FrontWindow& window, PrimaryProof proof,
                                     Deadline deadline) override;

 private:
  void waitForMenu();
  // Adds what is known of a program that shows itself inside the front window, as a terminal does
  // in a window of tabs, and gets its keys.
  void addEmbeddedProgram(windows::FrontWindow& front, const std::set<std::int64_t>& processes);
  bool primaryIsFrom(const windows::FrontWindow& window);

  const std::unique_ptr<SelectionReader> reader_;
  const std::unique_ptr<PrimaryWatch> watch_;
  const ActiveWindow activeWindow_;
  windows::MenuNotice menu_;
  xcb_window_t embedded_ = XCB_WINDOW_NONE;  // That program's window in the last front window.
};

}  // namespace tavin::x11
