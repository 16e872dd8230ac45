#include "platform/wayland/Compositor.h"

namespace tavin::wayland {
namespace {

// KWin answers late where it must first read which programs there are.
constexpr double secondsToConnect = 4;

}  // namespace

std::shared_ptr<Compositor> Compositor::connect(double transferIdleSeconds) {
  const Deadline deadline = Deadline::in(secondsToConnect);
  auto connection = Connection::open(deadline);
  auto control = connection ? DataControl::create(*connection) : nullptr;
  if (!control)
    return nullptr;
  std::shared_ptr<Compositor> compositor(
      new Compositor(std::move(connection), std::move(control), transferIdleSeconds));
  // What is selected already was made before anything was known of the windows.
  if (!compositor->connection_->roundTrip(deadline))
    return nullptr;
  compositor->connection_->bindingIsDone();
  compositor->control_->changed = [self = compositor.get()](Selection selection) {
    self->reader_.noteChange(selection);
    if (selection == Selection::primary && self->windows_)
      self->windows_->primaryChanged(self->control_->offer(selection) != nullptr);
  };
  compositor->thread_.start();
  return compositor;
}

Compositor::Compositor(std::unique_ptr<Connection> connection, std::unique_ptr<DataControl> control,
                       double transferIdleSeconds)
    : connection_(std::move(connection)),
      control_(std::move(control)),
      windows_(WindowWatch::create(*connection_)),
      thread_(*connection_),
      clipboard_(thread_, *connection_, *control_, transferIdleSeconds),
      reader_(thread_, *connection_, *control_) {
  thread_.add(clipboard_);
}

Compositor::~Compositor() { thread_.stop(); }

std::optional<Compositor::Front> Compositor::front(Deadline deadline) {
  if (!windows_)
    return std::nullopt;
  const auto front = thread_.ask<std::optional<Front>>(deadline, [=, this] {
    return connection_->roundTrip(deadline)
               ? std::optional(
                     Front{windows_->active(), windows_->primaryMaker(), windows_->processes()})
               : std::nullopt;
  });
  return front.value_or(std::nullopt);
}

}  // namespace tavin::wayland
