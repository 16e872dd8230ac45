#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/Workspace.h"

namespace tavin::desktop {

// What is asked of the freedesktop desktops. Programs that it starts live on without it.
class DesktopWorkspace final : public Workspace {
 public:
  struct Sound {
    // False where no sound can be played. It may hang with the sound server, so it is called on a
    // thread of its own.
    std::function<bool()> play;
    // What goes on for longer hangs.
    std::chrono::milliseconds longest;
  };

  // `displayBell` rings where no sound can be played; it is called on a thread of its own.
  explicit DesktopWorkspace(std::function<void()> displayBell);
  DesktopWorkspace(std::function<void()> displayBell, Sound sound);

  QByteArray desktop() override;
  void openFile(const QString& path) override;
  bool hasAccessibilitySettings() override;
  void openAccessibilitySettings() override;
  // A beep during another one adds nothing, unless that one hangs.
  void beep() override;

 private:
  struct Bell;
  std::shared_ptr<Bell> bell_;
};

}  // namespace tavin::desktop
