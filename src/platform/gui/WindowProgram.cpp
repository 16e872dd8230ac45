#include "platform/gui/WindowProgram.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFile>
#include <utility>

#include "platform/ActivationToken.h"

namespace tavin::gui {
namespace {

constexpr int questionEveryMs = 5000;
// What is shown next does not have to wait for another start.
constexpr int restMs = 2000;
constexpr int mostRestarts = 5;
constexpr int healthyMs = 60'000;
// What is typed into a field is far shorter.
constexpr quint32 longestEvent = 1 << 20;

struct SocketPair {
  posix::FileDescriptor ours;
  posix::FileDescriptor theirs;
};

SocketPair makeSocketPair() {
  int ends[2] = {-1, -1};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
    return {posix::FileDescriptor(), posix::FileDescriptor()};
  return {posix::FileDescriptor(ends[0]), posix::FileDescriptor(ends[1])};
}

}  // namespace

WindowProgram::WindowProgram(ProcessLauncher& launcher, SystemLog& log, Place place)
    : launcher_(launcher),
      log_(log),
      place_(std::move(place)),
      file_(::open(QFile::encodeName(place_.executable).constData(), O_PATH | O_CLOEXEC)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] { timeIsOver(); });
}

WindowProgram::~WindowProgram() { end(); }

void WindowProgram::showAlert(const Alert& alert, bool inFront,
                              std::function<void(AlertResponse)> answered) {
  answered_ = std::move(answered);
  send(ShowAlert{++alertId_, alert, inFront, takeActivationToken()});
}

void WindowProgram::bringAlertToFront() {
  if (answered_ && channel_)
    send(BringAlertToFront{takeActivationToken()});
}

void WindowProgram::closeAlert() {
  if (std::exchange(answered_, {}) && channel_)
    send(CloseAlert());
}

void WindowProgram::showMenu(std::optional<QPoint> position, std::vector<MenuLine> lines,
                             std::function<void(std::optional<quint32>)> closed) {
  closed_ = std::move(closed);
  send(ShowMenu{++menuId_, position, std::move(lines), takeActivationToken()});
}

void WindowProgram::closeMenu() {
  if (std::exchange(closed_, {}) && channel_)
    send(CloseMenu());
}

void WindowProgram::showIcon(const QString& symbol, const QString& toolTip,
                             std::function<void()> clicked) {
  if (!clicked_)
    restarts_ = 0;
  clicked_ = std::move(clicked);
  icon_ = {symbol, toolTip};
  send(icon_);
}

void WindowProgram::hideIcon() {
  icon_ = {};
  if (std::exchange(clicked_, {}) && channel_)
    send(icon_);
}

void WindowProgram::send(const Request& request) {
  if (!channel_ && !start()) {
    QTimer::singleShot(0, this, [this] {
      if (!channel_)
        lose(place_.executable + QStringLiteral(" cannot be started"));
    });
    return;
  }
  channel_->send(encode(request));
  ping();
}

bool WindowProgram::start() {
  started_.start();
  SocketPair sockets = makeSocketPair();
  if (!sockets.ours || !file_)
    return false;
  auto launched =
      launcher_.launch({.executable = QStringLiteral("/proc/self/fd/%1").arg(file_.get()),
                        .arguments = {place_.qtPlatform},
                        .workingDirectory = {},
                        .environment = {},
                        .output = STDERR_FILENO,
                        .input = sockets.theirs.get(),
                        .awaited = false},
                       {});
  if (std::holds_alternative<LaunchError>(launched))
    return false;
  process_ = std::get<std::shared_ptr<ChildProcess>>(std::move(launched));
  channel_ = std::make_unique<Channel>(
      std::move(sockets.ours), longestEvent,
      [this](const QByteArray& message) { received(message); },
      [this] { lose(QStringLiteral("it ended by itself")); });
  asked_ = false;
  if (clicked_)
    channel_->send(encode(Request(icon_)));
  return true;
}

void WindowProgram::received(const QByteArray& message) {
  const auto event = decodeEvent(message);
  if (!event)
    return lose(QStringLiteral("it sent what is no message"));
  std::visit([this](const auto& kind) { handle(kind); }, *event);
}

void WindowProgram::handle(const Pong&) {
  asked_ = false;
  rest();
}

void WindowProgram::handle(const Finished&) {
  if (!isNeeded())
    end();
}

void WindowProgram::handle(const AlertAnswered& answer) {
  if (!answered_ || answer.id != alertId_)
    return;
  const auto answered = std::exchange(answered_, {});
  rest();
  answered(answer.response);
}

void WindowProgram::handle(const MenuClosed& answer) {
  if (!closed_ || answer.id != menuId_)
    return;
  const auto closed = std::exchange(closed_, {});
  rest();
  closed(answer.chosen);
}

void WindowProgram::handle(const IconClicked&) {
  if (const auto clicked = clicked_)
    clicked();
}

void WindowProgram::ping() {
  if (std::exchange(asked_, true))
    return;
  channel_->send(encode(Request(Ping())));
  timer_.start(place_.patienceMs);
}

// Until the next question, where there is one.
void WindowProgram::rest() {
  if (asked_)
    return;
  if (isWatched())
    timer_.start(questionEveryMs);
  else if (!isNeeded())
    timer_.start(restMs);
  else
    timer_.stop();
}

void WindowProgram::timeIsOver() {
  if (!channel_)
    return restartForIcon();
  if (asked_)
    return lose(QStringLiteral("it does not answer"));
  if (isNeeded())
    return ping();
  channel_->send(encode(Request(Finish())));
}

void WindowProgram::lose(const QString& how) {
  end();
  log_.write(
      QStringLiteral("Tavin: the program that shows its windows: %1; what was open is closed")
          .arg(how));
  if (clicked_)
    timer_.start(place_.restartMs);
  const auto answered = std::exchange(answered_, {});
  const auto closed = std::exchange(closed_, {});
  if (answered)
    answered({});
  if (closed)
    closed(std::nullopt);
}

// It has nothing to put in order: the display takes back what it had.
void WindowProgram::end() {
  timer_.stop();
  channel_.reset();
  if (const auto process = std::exchange(process_, nullptr))
    process->kill();
}

void WindowProgram::restartForIcon() {
  if (started_.hasExpired(healthyMs))
    restarts_ = 0;
  if (clicked_ && ++restarts_ <= mostRestarts)
    send(icon_);
}

}  // namespace tavin::gui
