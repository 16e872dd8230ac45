#include "platform/windowlink/WindowProgram.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFile>
#include <utility>

#include "platform/ActivationToken.h"

namespace tavin::windowlink {
namespace {

constexpr int questionEveryMs = 5000;
constexpr int menuQuestionEveryMs = 1000;
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

posix::FileDescriptor openToRun(const QString& executable) {
  return posix::FileDescriptor(
      ::open(QFile::encodeName(executable).constData(), O_PATH | O_CLOEXEC));
}

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
      file_(openToRun(place_.executable)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] { timeIsOver(); });
}

WindowProgram::~WindowProgram() { end(); }

void WindowProgram::showAlert(const Alert& alert, bool inFront,
                              std::function<void(AlertResponse)> answered) {
  answered_ = std::move(answered);
  unseen_ = ShowAlert{++alertId_, alert, inFront, takeActivationToken()};
  send(*unseen_);
}

void WindowProgram::bringAlertToFront() {
  if (answered_ && channel_)
    send(BringAlertToFront{takeActivationToken()});
}

void WindowProgram::closeAlert() {
  unseen_.reset();
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
  if (!channel_)
    if (const auto failure = start()) {
      unsent_.push_back(request);
      QTimer::singleShot(0, this, [this, failure] {
        if (!channel_ && !unsent_.empty())
          lose(place_.executable + QStringLiteral(" cannot be started: ") + *failure);
      });
      return;
    }
  finishing_ = false;
  for (const Request& waiting : std::exchange(unsent_, {})) channel_->send(encode(waiting));
  channel_->send(encode(request));
  ping();
}

std::optional<QString> WindowProgram::start() {
  started_.start();
  if (!file_)
    file_ = openToRun(place_.executable);
  if (!file_)
    return qt_error_string(errno);
  SocketPair sockets = makeSocketPair();
  if (!sockets.ours)
    return qt_error_string(errno);
  auto launched =
      launcher_.launch({.executable = QStringLiteral("/proc/self/fd/%1").arg(file_.get()),
                        .arguments = {place_.qtPlatform},
                        .workingDirectory = {},
                        .environment = {},
                        .output = STDERR_FILENO,
                        .input = sockets.theirs.get(),
                        .awaited = false},
                       {});
  if (const auto* const error = std::get_if<LaunchError>(&launched))
    return error->description;
  process_ = std::get<std::shared_ptr<ChildProcess>>(std::move(launched));
  channel_ = std::make_unique<Channel>(
      std::move(sockets.ours), longestEvent,
      [this](const QByteArray& message) { received(message); },
      [this] { lose(QStringLiteral("it ended by itself")); });
  asked_ = answers_ = false;
  if (clicked_)
    channel_->send(encode(Request(icon_)));
  return std::nullopt;
}

void WindowProgram::received(const QByteArray& message) {
  const auto event = decodeEvent(message);
  if (!event)
    return lose(QStringLiteral("it sent what is no message"));
  std::visit([this](const auto& kind) { handle(kind); }, *event);
}

void WindowProgram::handle(const Pong&) {
  asked_ = false;
  answers_ = true;
  unseen_.reset();
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
  unseen_.reset();
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
  timer_.start(patience());
}

// At its start it may have to read much from a slow disk.
int WindowProgram::patience() const {
  return closed_ && answers_ ? place_.menuPatienceMs : place_.patienceMs;
}

// Until the next question, where there is one.
void WindowProgram::rest() {
  if (asked_)
    return;
  if (isWatched())
    timer_.start(closed_ ? menuQuestionEveryMs : questionEveryMs);
  else if (!isNeeded() && !finishing_)
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
  finishing_ = true;
  ping();  // First: whatever comes after it takes the other back.
  channel_->send(encode(Request(Finish())));
}

void WindowProgram::lose(const QString& how) {
  end();
  const auto unseen = std::exchange(unseen_, std::nullopt);
  const bool showAgain = unseen && answered_;
  const auto answered = showAgain ? nullptr : std::exchange(answered_, {});
  const auto closed = std::exchange(closed_, {});
  log_.write(QStringLiteral("Tavin: the program that shows its windows: ") + how +
             (answered || closed ? QStringLiteral("; what was open is closed") : QString()));
  if (clicked_)
    timer_.start(place_.restartMs);
  if (showAgain)
    send(*unseen);
  if (answered)
    answered({});
  if (closed)
    closed(std::nullopt);
}

// It has nothing to put in order: the display takes back what it had.
void WindowProgram::end() {
  timer_.stop();
  channel_.reset();
  unsent_.clear();
  if (const auto process = std::exchange(process_, nullptr))
    process->kill();
}

void WindowProgram::restartForIcon() {
  if (started_.hasExpired(healthyMs))
    restarts_ = 0;
  if (clicked_ && ++restarts_ <= mostRestarts)
    send(icon_);
}

}  // namespace tavin::windowlink
