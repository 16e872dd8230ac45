#include "platform/desktop/QtMainQueue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <deque>
#include <mutex>
#include <utility>

namespace tavin::desktop {
namespace {

int milliseconds(double seconds) {
  constexpr double longest = 1e9;
  return static_cast<int>(std::ceil(std::clamp(seconds * 1000, 0.0, longest)));
}

// Lives as long as the queue or until invalidated: the connection inside the QTimer keeps it.
class QtTimer final : public Timer {
 public:
  explicit QtTimer(QTimer* timer) : timer_(timer) {}
  void invalidate() override {
    if (!timer_)
      return;
    timer_->stop();
    timer_->deleteLater();  // Not at once: the block may be running.
    timer_ = nullptr;
  }

 private:
  QPointer<QTimer> timer_;
};

}  // namespace

// One event for each task, so that tasks go on inside a nested event loop of one of them.
class QtMainQueue::Receiver final : public QObject {
 public:
  void push(std::function<void()> task) {
    {
      const std::lock_guard lock(mutex_);
      tasks_.push_back(std::move(task));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }

  bool event(QEvent* event) override {
    if (event->type() != QEvent::User)
      return QObject::event(event);
    pop()();
    return true;
  }

 private:
  std::function<void()> pop() {
    const std::lock_guard lock(mutex_);
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    // A nested event loop of this task would not see by itself that more events were posted.
    if (!tasks_.empty())
      QAbstractEventDispatcher::instance()->wakeUp();
    return task;
  }

  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
};

QtMainQueue::QtMainQueue() : receiver_(std::make_unique<Receiver>()) {}
QtMainQueue::~QtMainQueue() = default;

void QtMainQueue::async(std::function<void()> task) { receiver_->push(std::move(task)); }

void QtMainQueue::asyncAfter(double seconds, std::function<void()> task) {
  using Clock = std::chrono::steady_clock;
  const auto due = Clock::now() + std::chrono::milliseconds(milliseconds(seconds));
  // A timer has to be made on its own thread.
  async([receiver = receiver_.get(), due, task = std::move(task)]() mutable {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now());
    QTimer::singleShot(std::max(left, std::chrono::milliseconds::zero()), Qt::PreciseTimer,
                       receiver, std::move(task));
  });
}

std::shared_ptr<Timer> QtMainQueue::scheduledTimer(
    double seconds, std::function<void(const std::shared_ptr<Timer>&)> block) {
  auto* source = new QTimer(receiver_.get());
  source->setTimerType(Qt::PreciseTimer);
  source->setInterval(milliseconds(seconds));
  auto timer = std::make_shared<QtTimer>(source);
  QObject::connect(source, &QTimer::timeout, source,
                   [timer, block = std::move(block)] { block(timer); });
  source->start();
  return timer;
}

}  // namespace tavin::desktop
