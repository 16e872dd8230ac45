#include <gtest/gtest.h>
#include <poll.h>

#include <atomic>
#include <thread>

#include "platform/posix/TaskInbox.h"

namespace tavin::posix {
namespace {

class TaskInboxTest : public testing::Test {
 protected:
  bool hasWork(int milliseconds = 0) const {
    pollfd file{inbox_.file(), POLLIN, 0};
    return poll(&file, 1, milliseconds) == 1;
  }

  TaskInbox inbox_;
};

TEST_F(TaskInboxTest, TasksRunInOrderWhenTheThreadComesToThem) {
  std::string order;
  EXPECT_FALSE(hasWork());
  EXPECT_TRUE(inbox_.post([&] { order += 'a'; }));
  EXPECT_TRUE(inbox_.post([&] { order += 'b'; }));
  EXPECT_EQ(order, "");
  EXPECT_TRUE(hasWork());
  inbox_.run();
  EXPECT_EQ(order, "ab");
  EXPECT_FALSE(hasWork());
}

TEST_F(TaskInboxTest, ATaskOfATaskRunsInTheNextRound) {
  int runs = 0;
  inbox_.post([&] { inbox_.post([&] { ++runs; }); });
  inbox_.run();
  EXPECT_EQ(runs, 0);
  EXPECT_TRUE(hasWork());
  inbox_.run();
  EXPECT_EQ(runs, 1);
}

TEST_F(TaskInboxTest, AskingGivesTheResultFromTheOtherThread) {
  std::thread::id ranOn;
  std::thread worker([&] {
    EXPECT_TRUE(hasWork(10'000));
    inbox_.run();
  });
  const auto expected = worker.get_id();
  EXPECT_EQ(inbox_.ask<int>(Deadline::in(10),
                            [&] {
                              ranOn = std::this_thread::get_id();
                              return 7;
                            }),
            7);
  worker.join();
  EXPECT_EQ(ranOn, expected);
}

TEST_F(TaskInboxTest, AStopIsSeenWheneverItComesBetweenTwoSleeps) {
  bool ran = false;
  EXPECT_TRUE(inbox_.run());
  inbox_.post([&] { ran = true; });
  inbox_.stop();
  EXPECT_TRUE(hasWork());
  EXPECT_FALSE(inbox_.run());
  EXPECT_TRUE(ran);
  EXPECT_FALSE(inbox_.run()) << "though its wake-up was taken";
}

TEST_F(TaskInboxTest, OnceClosedItTakesNothingAndAskingDoesNotWait) {
  inbox_.close();
  bool ran = false;
  const auto task = [&] {
    ran = true;
    return 1;
  };
  const Deadline deadline = Deadline::in(10);
  EXPECT_FALSE(inbox_.post([&] { task(); }));
  EXPECT_EQ(inbox_.ask<int>(deadline, task), std::nullopt);
  EXPECT_FALSE(deadline.passed());
  EXPECT_FALSE(hasWork());
  inbox_.run();
  EXPECT_FALSE(ran);
}

TEST_F(TaskInboxTest, ATaskWhoseAskerGaveUpRunsLaterWithAllThatItHolds) {
  const auto runs = std::make_shared<std::atomic<int>>(0);
  EXPECT_EQ(inbox_.ask<int>(Deadline::in(0.02), [runs] { return ++*runs; }), std::nullopt);
  EXPECT_EQ(*runs, 0);
  std::thread worker([this] { inbox_.run(); });
  worker.join();
  EXPECT_EQ(*runs, 1);
  EXPECT_EQ(runs.use_count(), 1) << "nothing is kept once it has run";
}

TEST_F(TaskInboxTest, AnAskerThatGivesUpWhileItsTaskRunsLeavesItUndisturbed) {
  const auto asked = std::make_shared<std::atomic<bool>>(true);
  const auto ended = std::make_shared<std::atomic<bool>>(false);
  std::thread worker([&] {
    EXPECT_TRUE(hasWork(10'000));
    inbox_.run();
  });
  EXPECT_EQ(inbox_.ask<int>(Deadline::in(0.05),
                            [asked, ended] {
                              while (*asked) std::this_thread::yield();
                              *ended = true;
                              return 1;
                            }),
            std::nullopt);
  *asked = false;
  worker.join();
  EXPECT_TRUE(*ended);
}

}  // namespace
}  // namespace tavin::posix
