#pragma once

#include <wayland-server-core.h>

#include <QByteArray>
#include <QTemporaryDir>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

struct wl_resource;

namespace tavin::test {

// A compositor that has a seat, the standard protocol for data control and KWin's for the modifiers
// that are held and for other programs' keys, and nothing else. Its clipboard holds one text from
// the start. While it lives, WAYLAND_DISPLAY is its socket.
class FakeCompositor {
 public:
  explicit FakeCompositor(QByteArray text);
  ~FakeCompositor() { end(); }
  FakeCompositor(const FakeCompositor&) = delete;
  FakeCompositor& operator=(const FakeCompositor&) = delete;

  // One of KWin's numbers for the modifiers; from now on it is held down, alone.
  void hold(std::uint32_t modifier) { held_ = modifier; }
  // From now on it answers nothing, but is still there.
  void hang() { hanging_ = true; }
  void goOn() { hanging_ = false; }
  // Closes all connections.
  void end();

 private:
  struct Requests;
  struct Source {
    wl_resource* resource = nullptr;
    std::vector<std::string> types;
  };

  void tell(wl_resource* device);
  void give(const char* type, int pipe);

  QTemporaryDir folder_;
  const QByteArray text_;
  wl_display* display_;
  std::vector<wl_resource*> devices_;
  Source source_;                        // Of the client that owns the clipboard;
  bool holdsText_ = true;                // before, the text.
  std::atomic<std::uint32_t> held_ = 0;  // The first modifier is Caps Lock, which none asks for.
  std::atomic<bool> hanging_ = false;
  std::atomic<bool> stopping_ = false;
  std::thread thread_;
};

}  // namespace tavin::test
