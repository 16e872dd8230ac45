#include "platform/ThreadQueue.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace tavin {

struct ThreadQueue::State {
  explicit State(std::size_t limit) : maxThreads(limit) {}

  const std::size_t maxThreads;
  std::mutex mutex;
  std::condition_variable wake;
  std::deque<std::function<void()>> tasks;
  std::size_t threads = 0;
  std::size_t idle = 0;
  bool stopped = false;
};

ThreadQueue::ThreadQueue(std::size_t maxThreads) : state_(std::make_shared<State>(maxThreads)) {}

ThreadQueue::~ThreadQueue() {
  std::deque<std::function<void()>> dropped;
  {
    const std::lock_guard lock(state_->mutex);
    state_->stopped = true;
    dropped.swap(state_->tasks);
  }
  state_->wake.notify_all();
}

void ThreadQueue::async(std::function<void()> task) {
  bool needsThread = false;
  {
    const std::lock_guard lock(state_->mutex);
    state_->tasks.push_back(std::move(task));
    needsThread = state_->tasks.size() > state_->idle && state_->threads < state_->maxThreads;
    if (needsThread)
      ++state_->threads;
  }
  if (needsThread)
    startThread();
  else
    state_->wake.notify_one();
}

void ThreadQueue::startThread() {
  try {
    std::thread([state = state_] { run(state); }).detach();
  } catch (const std::system_error&) {
    // The system has no thread to give now: the task waits for a running one or the next attempt.
    const std::lock_guard lock(state_->mutex);
    --state_->threads;
  }
}

void ThreadQueue::run(const std::shared_ptr<State>& state) {
  std::unique_lock lock(state->mutex);
  while (true) {
    ++state->idle;
    state->wake.wait(lock, [&] { return state->stopped || !state->tasks.empty(); });
    --state->idle;
    if (state->stopped)
      return;
    auto task = std::move(state->tasks.front());
    state->tasks.pop_front();
    lock.unlock();
    task();
    task = nullptr;  // What the task holds is released before the thread sleeps again.
    lock.lock();
  }
}

}  // namespace tavin
