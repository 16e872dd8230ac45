#include "platform/wayland/Compositor.h"

namespace tavin::wayland {
namespace {

// KWin answers late where it must first read which programs there are.
constexpr double secondsToConnect = 4;
// One press looks at the windows more than once, and shall not wait that long each time.
constexpr double secondsBetweenTries = 2;

}  // namespace

std::shared_ptr<Compositor> Compositor::connect(double transferIdleSeconds) {
  auto line = Line::open(transferIdleSeconds);
  return line ? std::shared_ptr<Compositor>(new Compositor(std::move(line), transferIdleSeconds))
              : nullptr;
}

void Compositor::renew() {
  if (!line_->thread.hasEnded() || !nextTry_.passed())
    return;
  if (std::shared_ptr<Line> line = Line::open(transferIdleSeconds_)) {
    const std::lock_guard lock(mutex_);
    line_.swap(line);
  }
  nextTry_ = Deadline::in(secondsBetweenTries);
}

std::shared_ptr<ClipboardServer> Compositor::clipboard() {
  const std::lock_guard lock(mutex_);
  return {line_, &line_->clipboard};
}

std::shared_ptr<SelectionReader> Compositor::reader() {
  const std::lock_guard lock(mutex_);
  return {line_, &line_->reader};
}

std::unique_ptr<Compositor::Line> Compositor::Line::open(double transferIdleSeconds) {
  const Deadline deadline = Deadline::in(secondsToConnect);
  auto opened = Connection::open(deadline);
  auto found = opened ? DataControl::create(*opened) : nullptr;
  if (!found)
    return nullptr;
  auto line = std::make_unique<Line>(std::move(opened), std::move(found), transferIdleSeconds);
  // What is selected already was made before anything was known of the windows.
  if (!line->connection->roundTrip(deadline))
    return nullptr;
  line->connection->bindingIsDone();
  line->control->changed = [self = line.get()](SelectionKind selection) {
    self->reader.noteChange(selection);
    if (selection == SelectionKind::clipboard)
      self->clipboard.noteChange();
    else if (self->windows)
      self->windows->primaryChanged(self->control->offer(selection) != nullptr);
  };
  line->thread.start(line->clipboard);
  return line;
}

Compositor::Line::Line(std::unique_ptr<Connection> opened, std::unique_ptr<DataControl> found,
                       double transferIdleSeconds)
    : connection(std::move(opened)),
      control(std::move(found)),
      windows(WindowWatch::create(*connection)),
      thread(*connection),
      clipboard(thread, *connection, *control, windows.get(), transferIdleSeconds),
      reader(thread, *connection, *control) {}

std::optional<Compositor::Front> Compositor::front(Deadline deadline) {
  if (!tellsWindows())
    return std::nullopt;
  const auto front = line_->thread.ask<std::optional<Front>>(deadline, [deadline,
                                                                        line = line_.get()] {
    const auto& windows = *line->windows;
    return line->connection->roundTrip(deadline)
               ? std::optional(Front{windows.active(), windows.primaryMaker(), windows.processes()})
               : std::nullopt;
  });
  return front.value_or(std::nullopt);
}

}  // namespace tavin::wayland
