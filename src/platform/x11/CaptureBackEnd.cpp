#include "platform/x11/CaptureBackEnd.h"

#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11WindowSystem.h"

namespace tavin::x11 {
namespace {

// To say that it keeps the clipboard; a manager that never says so has the whole time to read it.
constexpr double secondsForAnswer = 0.5;
constexpr double secondsForHandOver = 2;

}  // namespace

std::optional<copy::Clipboard> createClipboard() {
  std::shared_ptr<ClipboardServer> server = ClipboardServer::create();
  auto reader = SelectionReader::create();
  if (!server || !reader)
    return std::nullopt;
  return copy::Clipboard{std::make_unique<X11Pasteboard>(std::move(reader), server), [server] {
                           server->handOver(Deadline::in(secondsForAnswer),
                                            Deadline::in(secondsForHandOver));
                         }};
}

std::unique_ptr<windows::WindowSystem> createWindowSystem() {
  auto reader = SelectionReader::create();
  return reader ? std::make_unique<X11WindowSystem>(std::move(reader), PrimaryWatch::create())
                : nullptr;
}

}  // namespace tavin::x11
