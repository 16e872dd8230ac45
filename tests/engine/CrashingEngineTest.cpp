#include <gmock/gmock.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <mutex>
#include <utility>

#include "engine/EngineClient.h"
#include "fake/FakePlatform.h"
#include "platform/Bundle.h"
#include "platform/Eventually.h"
#include "platform/posix/PosixProcessLauncher.h"

namespace tavin::test {
namespace {

// Keeps what is to run later, for the test to run; a child's end comes on another thread.
class PatientQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override { asyncAfter(0, std::move(task)); }
  void asyncAfter(double seconds, std::function<void()> task) override {
    const std::lock_guard lock(mutex_);
    delays.push_back(seconds);
    tasks_.push_back(std::move(task));
  }
  std::shared_ptr<Timer> scheduledTimer(
      double, std::function<void(const std::shared_ptr<Timer>&)>) override {
    return nullptr;
  }
  // Runs the oldest, if there is one.
  bool runOne() {
    std::function<void()> task;
    {
      const std::lock_guard lock(mutex_);
      if (tasks_.empty())
        return false;
      task = std::move(tasks_.front());
      tasks_.erase(tasks_.begin());
    }
    task();
    return true;
  }
  std::vector<double> delays;

 private:
  std::mutex mutex_;
  std::vector<std::function<void()>> tasks_;
};

// An engine that notes its start and dies of a signal.
QString makeCrashingEngine(const QTemporaryDir& folder) {
  QDir().mkpath(folder.filePath(".venv/bin"));
  QFile script(folder.filePath(".venv/bin/python"));
  EXPECT_TRUE(script.open(QIODevice::WriteOnly));
  script.write("#!/bin/sh\necho started >> starts\nkill -SEGV $$\n");
  script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  return folder.path();
}

qsizetype starts(const QTemporaryDir& folder) {
  QFile file(folder.filePath("starts"));
  return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
}

TEST(CrashingEngineTest, EngineThatCrashesIsStartedFiveTimesMoreAndNoSixth) {
  const QTemporaryDir folder;
  const QByteArray home = qgetenv("HOME");
  qputenv("HOME", folder.path().toUtf8());
  FakePlatform fakes;
  fakes.engine.reachable = false;
  Bundle bundle;
  bundle.info = {{"TavinEngineDir", makeCrashingEngine(folder)}};
  posix::PosixProcessLauncher launcher;
  PatientQueue queue;
  const auto client = std::make_shared<EngineClient>(
      EngineClient::Services{fakes.engine, {launcher, queue, fakes.log, bundle}});
  client->startIfNeeded();
  for (int restart = 1; restart <= 5; ++restart)
    ASSERT_TRUE(eventually([&queue] { return queue.runOne(); })) << restart;
  ASSERT_TRUE(eventually([&folder] { return starts(folder) == 6; }));
  EXPECT_FALSE(eventually([&queue] { return queue.runOne(); }, 500));
  EXPECT_EQ(starts(folder), 6);
  EXPECT_THAT(queue.delays, ::testing::ElementsAre(2.0, 2.0, 2.0, 2.0, 2.0));
  qputenv("HOME", home);
}

}  // namespace
}  // namespace tavin::test
