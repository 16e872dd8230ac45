#include "platform/gnome/GnomeWindows.h"

#include "platform/posix/ProcessFolder.h"

namespace tavin::gnome {
namespace {

constexpr std::uint64_t nativeWindow = ~std::uint64_t{0};

}  // namespace

windows::FrontWindow GnomeWindows::frontWindow() {
  const bool afterMenu = menu_.take();
  const auto display = probe_.look();
  if (display == x11::DisplayProbe::Display::other)
    xwayland_ = make_();
  silent_ = display == x11::DisplayProbe::Display::silent;
  windows::FrontWindow front = answers() ? xwayland_->frontWindow() : windows::FrontWindow();
  // A menu of our own may be the active window still.
  if (front.id == 0 || (afterMenu && posix::showsOurWindows(front.processId))) {
    front = {};
    front.id = nativeWindow;
    front.unknown = true;
  }
  front.afterMenu = afterMenu;
  return front;
}

std::set<std::int64_t> GnomeWindows::windowProcesses() {
  return answers() ? xwayland_->windowProcesses() : std::set<std::int64_t>();
}

std::optional<QString> GnomeWindows::primaryText(const windows::FrontWindow& window,
                                                 PrimaryProof proof, Deadline deadline) {
  if (!answers() || window.id == nativeWindow)
    return std::nullopt;
  return xwayland_->primaryText(window, proof, deadline);
}

}  // namespace tavin::gnome
