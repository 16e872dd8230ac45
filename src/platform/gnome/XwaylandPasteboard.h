#pragma once

#include <QDBusConnection>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/copy/Clipboard.h"
#include "platform/gnome/InputClock.h"
#include "platform/x11/DisplayProbe.h"

namespace tavin::gnome {

// The clipboard through Xwayland, which GNOME ends and starts again as it likes: each look at the
// contents finds the display that is there now. What was served on one that has ended is lost.
// Xwayland hears of keys and buttons in its own windows alone, so the shell is asked for the last
// input as well; a moved pointer counts there.
class XwaylandPasteboard final : public copy::WatchedPasteboard {
 public:
  using Maker = std::function<std::optional<copy::Clipboard>()>;

  // None where there is no display now. `bus` is the session's.
  static std::optional<copy::Clipboard> create(Maker make, const QDBusConnection& bus);

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override;
  std::int64_t changeCount() override;
  std::optional<QString> string() override;
  void clearContents() override;
  void writeObjects(const std::vector<PasteboardItem>& items) override;
  void beginWatch(std::function<void()> onChange) override;
  void endWatch() override;
  std::vector<copy::ClipboardChange> takeChanges() override;
  void shortcutArrived(copy::UserInput::Time time) override;

 private:
  // Of the clipboard in use; called from other threads, too.
  struct HandOver {
    std::mutex mutex;
    std::function<void()> run;
  };

  XwaylandPasteboard(Maker make, copy::Clipboard first, const QDBusConnection& bus);
  void use(copy::Clipboard clipboard);

  const Maker make_;
  const std::shared_ptr<HandOver> handOver_ = std::make_shared<HandOver>();
  const QDBusConnection bus_;
  std::unique_ptr<copy::WatchedPasteboard> pasteboard_;  // Null where the display is gone.
  Clock::time_point watchedSince_;
  Clock::time_point pressIsOver_;  // Later input is the user's to do something else.
  x11::DisplayProbe probe_;
};

}  // namespace tavin::gnome
