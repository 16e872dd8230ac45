#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <future>
#include <latch>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "platform/ThreadQueue.h"

namespace tavin {
namespace {

using namespace std::chrono_literals;

TEST(ThreadQueueTest, SerialQueueRunsInOrderOnOneThreadOfItsOwn) {
  ThreadQueue queue(1);
  std::vector<int> order;
  std::set<std::thread::id> threads;
  std::promise<void> done;
  for (int i = 0; i < 1000; ++i) {
    queue.async([&, i] {
      order.push_back(i);
      threads.insert(std::this_thread::get_id());
    });
  }
  queue.async([&] { done.set_value(); });
  done.get_future().wait();
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  EXPECT_EQ(order.size(), 1000U);
  EXPECT_EQ(threads.size(), 1U);
  EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

TEST(ThreadQueueTest, OneTaskNeverWaitsForAnotherWhileThereIsRoom) {
  ThreadQueue queue(64);
  // All must be under way at once, or none gets on.
  std::latch everyone(64);
  std::promise<void> last;
  std::atomic<int> finished = 0;
  for (int i = 0; i < 64; ++i) {
    queue.async([&] {
      everyone.arrive_and_wait();
      if (++finished == 64)
        last.set_value();
    });
  }
  EXPECT_EQ(last.get_future().wait_for(30s), std::future_status::ready);
}

TEST(ThreadQueueTest, ThreadIsUsedAgain) {
  ThreadQueue queue(64);
  std::set<std::thread::id> threads;
  for (int i = 0; i < 50; ++i) {
    std::promise<std::thread::id> ran;
    auto id = ran.get_future();
    queue.async([&] { ran.set_value(std::this_thread::get_id()); });
    threads.insert(id.get());
  }
  EXPECT_LT(threads.size(), 50U);
}

TEST(ThreadQueueTest, DestructionDropsWhatHasNotStartedAndWaitsForNothing) {
  std::promise<void> started;
  std::promise<void> release;
  const auto released = release.get_future().share();
  const auto held = std::make_shared<int>(1);
  std::atomic<bool> ranDropped = false;
  {
    ThreadQueue queue(1);
    queue.async([&started, released] {
      started.set_value();
      released.wait();
    });
    queue.async([held, &ranDropped] { ranDropped = true; });
    started.get_future().wait();
  }
  EXPECT_EQ(held.use_count(), 1);
  release.set_value();
  EXPECT_FALSE(ranDropped);
}

TEST(ThreadQueueTest, WhatATaskHoldsIsReleasedWhenItHasRun) {
  ThreadQueue queue(1);
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> weak = held;
  queue.async([held = std::move(held)] {});
  std::promise<bool> gone;
  queue.async([&] { gone.set_value(weak.expired()); });
  EXPECT_TRUE(gone.get_future().get());
}

TEST(ThreadQueueTest, TaskMaySubmitAnother) {
  ThreadQueue queue(1);
  std::promise<void> done;
  queue.async([&] { queue.async([&] { done.set_value(); }); });
  EXPECT_EQ(done.get_future().wait_for(30s), std::future_status::ready);
}

}  // namespace
}  // namespace tavin
