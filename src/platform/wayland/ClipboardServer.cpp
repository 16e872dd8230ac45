#include "platform/wayland/ClipboardServer.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/wayland/Listener.h"

namespace tavin::wayland {
namespace {

// The thread only ever waits for the compositor, so this is a guard against one that hangs.
constexpr double patienceSeconds = 1;
// A clipboard manager that fills an empty clipboard with its own last entry would race with
// contents that are put there right afterwards.
constexpr double secondsUntilCleared = 0.05;

}  // namespace

// What is offered through one source, for as long as the compositor keeps it.
struct ClipboardServer::Served {
  Served(ClipboardServer& owner, PasteboardItem offered,
         Owned<zwlr_data_control_source_v1> newSource)
      : server(owner), item(std::move(offered)), source(std::move(newSource)) {}

  ClipboardServer& server;
  PasteboardItem item;
  Owned<zwlr_data_control_source_v1> source;

  void send(const char* type, std::int32_t fd) {
    posix::FileDescriptor pipe(fd);
    const auto& types = item.types;
    const auto found = std::find_if(types.begin(), types.end(), [type](const auto& entry) {
      return entry.first == QLatin1String(type);
    });
    if (found != types.end())
      server.writers_.begin(std::move(pipe), found->second);
  }
  void cancelled() {
    if (server.served_.get() == this)
      server.served_.reset();
  }
};

ClipboardServer::ClipboardServer(EventThread& thread, Connection& connection, DataControl& control,
                                 const WindowWatch* windows, double transferIdleSeconds)
    : thread_(thread),
      connection_(connection),
      control_(control),
      writers_(transferIdleSeconds),
      watch_(connection, windows) {}

ClipboardServer::~ClipboardServer() = default;

std::int64_t ClipboardServer::changeCount() {
  const auto count =
      thread_.ask<std::int64_t>(Deadline::in(patienceSeconds), [this]() -> std::int64_t {
        clearIfDue(true);
        connection_.roundTrip(Deadline::in(patienceSeconds));
        return control_.changes(SelectionKind::clipboard);
      });
  lastKnownCount_ = count.value_or(lastKnownCount_);
  return lastKnownCount_;
}

void ClipboardServer::serve(PasteboardItem item) {
  thread_.ask<bool>(Deadline::in(patienceSeconds), [this, item = std::move(item)]() mutable {
    claim(std::move(item));
    return true;
  });
}

void ClipboardServer::clear() {
  thread_.ask<bool>(Deadline::in(patienceSeconds), [this] {
    // What was put there before this moment is cleared, though we may not have heard of it yet.
    connection_.roundTrip(Deadline::in(patienceSeconds));
    clearAt_ = Deadline::in(secondsUntilCleared);
    changesBeforeClear_ = control_.changes(SelectionKind::clipboard);
    return true;
  });
}

void ClipboardServer::clearNow(Deadline deadline) {
  thread_.ask<bool>(deadline, [this, deadline] {
    clearIfDue(true);
    return connection_.roundTrip(deadline);
  });
}

void ClipboardServer::beginWatch(std::function<void()> onChange) {
  thread_.ask<bool>(Deadline::in(patienceSeconds),
                    [this, onChange = std::move(onChange)]() mutable {
                      clearIfDue(true);
                      const bool answered = connection_.roundTrip(Deadline::in(patienceSeconds));
                      watch_.begin(std::move(onChange));
                      return answered;
                    });
}

void ClipboardServer::endWatch() {
  thread_.ask<bool>(Deadline::in(patienceSeconds), [this] {
    watch_.end();
    return true;
  });
}

std::vector<copy::ClipboardChange> ClipboardServer::takeChanges() {
  thread_.ask<bool>(Deadline::in(patienceSeconds),
                    [this] { return connection_.roundTrip(Deadline::in(patienceSeconds)); });
  return watch_.takeChanges();
}

void ClipboardServer::shortcutArrived(copy::UserInput::Time time) {
  thread_.ask<bool>(Deadline::in(patienceSeconds), [this, time] {
    const bool answered = connection_.roundTrip(Deadline::in(patienceSeconds));
    watch_.shortcutArrived(time);
    return answered;
  });
}

void ClipboardServer::noteChange() {
  if (!changing_)
    watch_.changed();
}

std::optional<Deadline> ClipboardServer::nextDeadline() {
  const auto writing = writers_.nextDeadline();
  return clearAt_ && (!writing || *clearAt_ < *writing) ? clearAt_ : writing;
}

void ClipboardServer::proceed() {
  writers_.proceed();
  clearIfDue(false);
}

void ClipboardServer::claim(PasteboardItem item) {
  clearAt_.reset();
  auto served = std::make_unique<Served>(*this, std::move(item), control_.createSource());
  if (!served->source)
    return;
  static constexpr zwlr_data_control_source_v1_listener events{
      .send = calls<&Served::send>, .cancelled = calls<&Served::cancelled>};
  zwlr_data_control_source_v1_add_listener(served->source.get(), &events, served.get());
  for (const auto& [type, bytes] : served->item.types)
    zwlr_data_control_source_v1_offer(served->source.get(), type.toLatin1().constData());
  auto* const source = served->source.get();
  // Ended only when the other has its place, so that the clipboard is never empty in between.
  const auto before = std::exchange(served_, std::move(served));
  change(source);
}

// The compositor does not tell which change is our own: of those that it tells until it has
// answered, one is.
void ClipboardServer::change(zwlr_data_control_source_v1* source) {
  const auto before = control_.changes(SelectionKind::clipboard);
  changing_ = true;
  control_.setClipboard(source);
  connection_.roundTrip(Deadline::in(patienceSeconds));
  changing_ = false;
  for (auto others = control_.changes(SelectionKind::clipboard) - before; others > 1; --others)
    watch_.changed();
}

void ClipboardServer::clearIfDue(bool now) {
  if (!clearAt_ || (!now && !clearAt_->passed()))
    return;
  clearAt_.reset();
  if (control_.changes(SelectionKind::clipboard) != changesBeforeClear_)
    return;  // A program has put something there meanwhile.
  change(nullptr);
  served_.reset();
}

}  // namespace tavin::wayland
