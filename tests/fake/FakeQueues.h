#pragma once

#include <deque>
#include <list>

#include "fake/Journal.h"
#include "platform/MainQueue.h"

namespace tavin::test {

// A queue whose tasks wait until the test runs them.
class FakeQueue : public Executor {
 public:
  FakeQueue(Journal& journal, QString name) : journal_(journal), name_(std::move(name)) {}

  void async(std::function<void()> task) override { tasks_.push_back(std::move(task)); }

  std::size_t pending() const { return tasks_.size(); }
  // False when nothing waits.
  bool runOne() {
    if (tasks_.empty())
      return false;
    const auto task = std::move(tasks_.front());
    tasks_.pop_front();
    const QString before = journal_.queue();
    journal_.setQueue(name_);
    task();
    journal_.setQueue(before);
    return true;
  }
  void drop() { tasks_.clear(); }

 private:
  Journal& journal_;
  const QString name_;
  std::deque<std::function<void()>> tasks_;
};

class FakeMainQueue final : public MainQueue {
 public:
  struct FakeTimer final : Timer {
    void invalidate() override { valid = false; }
    double interval = 0;
    bool valid = true;
    std::function<void(const std::shared_ptr<Timer>&)> block;
  };
  struct Delayed {
    double seconds;
    std::function<void()> task;
  };

  explicit FakeMainQueue(Journal& journal) : queue(journal, QStringLiteral("main")) {}

  void async(std::function<void()> task) override { queue.async(std::move(task)); }
  void asyncAfter(double seconds, std::function<void()> task) override {
    delayed.push_back({seconds, std::move(task)});
  }
  std::shared_ptr<Timer> scheduledTimer(
      double seconds, std::function<void(const std::shared_ptr<Timer>&)> block) override {
    auto timer = std::make_shared<FakeTimer>();
    timer->interval = seconds;
    timer->block = std::move(block);
    timers.push_back(timer);
    return timer;
  }

  // One tick of the timer that was scheduled as number `index`.
  void tick(std::size_t index) {
    if (timers.at(index)->valid)
      timers[index]->block(timers[index]);
  }
  long validTimers() const {
    return std::count_if(timers.begin(), timers.end(), [](const auto& t) { return t->valid; });
  }

  FakeQueue queue;
  std::vector<Delayed> delayed;
  std::vector<std::shared_ptr<FakeTimer>> timers;
};

}  // namespace tavin::test
