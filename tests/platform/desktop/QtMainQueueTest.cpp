#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <chrono>
#include <numeric>
#include <thread>
#include <vector>

#include "platform/Eventually.h"
#include "platform/desktop/QtMainQueue.h"

namespace tavin::desktop {
namespace {

using Clock = std::chrono::steady_clock;

class QtMainQueueTest : public testing::Test {
 protected:
  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  QtMainQueue queue_;
  std::vector<int> ran_;
};

TEST_F(QtMainQueueTest, RunsTasksInTheOrderOfTheirSubmission) {
  for (int i = 0; i < 3; ++i) queue_.async([this, i] { ran_.push_back(i); });
  EXPECT_TRUE(ran_.empty()) << "async must not run the task itself";
  EXPECT_TRUE(eventually([this] { return ran_.size() == 3; }));
  EXPECT_THAT(ran_, testing::ElementsAre(0, 1, 2));
}

TEST_F(QtMainQueueTest, RunsTasksOfOtherThreadsOnTheMainThread) {
  std::vector<int> expected(100);
  std::iota(expected.begin(), expected.end(), 0);
  const auto main = std::this_thread::get_id();
  std::thread other([&] {
    for (const int i : expected)
      queue_.async([&, i] {
        EXPECT_EQ(std::this_thread::get_id(), main);
        ran_.push_back(i);
      });
  });
  EXPECT_TRUE(eventually([&] { return ran_.size() == expected.size(); }));
  other.join();
  EXPECT_EQ(ran_, expected);
}

TEST_F(QtMainQueueTest, GoesOnInsideANestedLoopOfATask) {
  QEventLoop nested;
  queue_.async([&] {
    ran_.push_back(1);
    nested.exec();
    ran_.push_back(3);
  });
  queue_.async([&] {
    ran_.push_back(2);
    nested.quit();
  });
  EXPECT_TRUE(eventually([this] { return ran_.size() == 3; }));
  EXPECT_THAT(ran_, testing::ElementsAre(1, 2, 3));
}

TEST_F(QtMainQueueTest, DelaysFromTheSubmissionOn) {
  const auto start = Clock::now();
  Clock::time_point ran;
  std::thread([&] {
    queue_.asyncAfter(0.2, [&] { ran = Clock::now(); });
    queue_.asyncAfter(-1, [this] { ran_.push_back(1); });
  }).join();
  EXPECT_TRUE(eventually([&] { return ran != Clock::time_point(); }));
  EXPECT_GE(ran - start, std::chrono::milliseconds(200));
  EXPECT_THAT(ran_, testing::ElementsAre(1));
}

TEST_F(QtMainQueueTest, RepeatsUntilInvalidated) {
  const auto start = Clock::now();
  int calls = 0;
  queue_.scheduledTimer(0.02, [&](const std::shared_ptr<Timer>& timer) {
    if (++calls == 3) {
      timer->invalidate();
      timer->invalidate();
    }
  });
  EXPECT_TRUE(eventually([&] { return calls == 3; }));
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(60));
  eventually([] { return false; }, 100);
  EXPECT_EQ(calls, 3);
}

TEST_F(QtMainQueueTest, AnInvalidTimerHoldsNothing) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watched = held;
  const auto timer =
      queue_.scheduledTimer(1000, [held](const std::shared_ptr<Timer>&) { (void)held; });
  held.reset();
  EXPECT_FALSE(watched.expired()) << "the loop keeps a valid timer";
  timer->invalidate();
  EXPECT_TRUE(eventually([&] {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return watched.expired();
  }));
}

TEST_F(QtMainQueueTest, DropsWhatHasNotRunWhenItGoes) {
  {
    QtMainQueue shortLived;
    shortLived.async([this] { ran_.push_back(1); });
    shortLived.asyncAfter(0, [this] { ran_.push_back(2); });
    shortLived.scheduledTimer(0.001, [this](const auto&) { ran_.push_back(3); });
  }
  eventually([] { return false; }, 50);
  EXPECT_TRUE(ran_.empty());
}

}  // namespace
}  // namespace tavin::desktop
