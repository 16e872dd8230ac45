#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "engine/EngineClient.h"
#include "engine/EngineLog.h"
#include "fake/FakePlatform.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

// Runs with a home and resources of its own.
class EngineSupervisorTest : public ::testing::Test {
 protected:
  EngineSupervisorTest() : oldHome(qgetenv("HOME")) {
    qputenv("HOME", folder.path().toUtf8());
    fakes.engine.reachable = false;
    fakes.platform.bundle.info = {{"TavinEngineDir", "/dev-engine"}};
  }
  ~EngineSupervisorTest() override { qputenv("HOME", oldHome); }

  QString bundleEngine(bool executable) {
    fakes.platform.bundle.resourcesDirectory = folder.filePath("share");
    const QString bin = folder.filePath("share/engine/python/bin");
    QDir().mkpath(bin);
    QFile python(bin + "/python3");
    EXPECT_TRUE(python.open(QIODevice::WriteOnly));
    python.setPermissions(executable ? QFile::ReadOwner | QFile::ExeOwner : QFile::ReadOwner);
    return python.fileName();
  }
  const ProcessDescription& launched() const { return fakes.launcher.launched.back(); }
  void exit() { fakes.launcher.onExit.back()(); }
  void runDelayed() {
    const auto task = fakes.mainQueue.delayed.back().task;
    fakes.mainQueue.delayed.pop_back();
    task();
  }

  QTemporaryDir folder;
  const QByteArray oldHome;
  FakePlatform fakes;
  std::shared_ptr<EngineClient> client = std::make_shared<EngineClient>(EngineClient::Services{
      fakes.engine, {fakes.launcher, fakes.mainQueue, fakes.log, fakes.platform.bundle}});
};

TEST_F(EngineSupervisorTest, BundledEngineIsStartedWithItsOwnPython) {
  const QString python = bundleEngine(true);
  client->startIfNeeded();
  EXPECT_EQ(launched().executable, python);
  EXPECT_EQ(launched().arguments, QStringList({"-m", "tavin.server"}));
  EXPECT_EQ(launched().workingDirectory, folder.filePath("share/engine"));
  const QString dir = folder.filePath("share/engine");
  EXPECT_THAT(launched().environment,
              ElementsAre(Pair(QStringLiteral("PYTHONDONTWRITEBYTECODE"), QStringLiteral("1")),
                          Pair(QStringLiteral("PYTHONNOUSERSITE"), QStringLiteral("1")),
                          Pair(QStringLiteral("PYTHONPATH"), dir + ":" + dir + "/site-packages")));
}

TEST_F(EngineSupervisorTest, BundledPythonThatIsNotExecutableFallsThroughToTheDevelopmentEngine) {
  bundleEngine(false);
  if (::geteuid() == 0) {
    // Root may execute whatever has any execute bit; this file has none.
    ASSERT_NE(::access(qPrintable(folder.filePath("share/engine/python/bin/python3")), X_OK), 0);
  }
  client->startIfNeeded();
  EXPECT_EQ(launched().executable, QStringLiteral("/dev-engine/.venv/bin/python"));
}

TEST_F(EngineSupervisorTest, DevelopmentEngineInheritsTheEnvironmentUnchanged) {
  client->startIfNeeded();
  EXPECT_EQ(launched().executable, QStringLiteral("/dev-engine/.venv/bin/python"));
  EXPECT_EQ(launched().workingDirectory, QStringLiteral("/dev-engine"));
  EXPECT_THAT(launched().environment, IsEmpty());
}

TEST_F(EngineSupervisorTest, EmptyOrForeignEngineDirReadsAsMissing) {
  for (const QJsonValue& value : {QJsonValue(""), QJsonValue(7), QJsonValue()}) {
    fakes.platform.bundle.info = {{"TavinEngineDir", value}};
    client->startIfNeeded();
  }
  EXPECT_THAT(fakes.launcher.launched, IsEmpty());
  EXPECT_EQ(fakes.log.lines,
            std::vector<std::string>(3, "Tavin: no bundled engine and no TavinEngineDir"));
}

TEST_F(EngineSupervisorTest, AnsweringEngineIsLeftAloneAndNotTerminated) {
  fakes.engine.reachable = true;
  client->startIfNeeded();
  EXPECT_EQ(fakes.engine.requests.back().timeout, 0.5);
  client->shutdown();
  EXPECT_THAT(fakes.launcher.launched, IsEmpty());
  EXPECT_EQ(fakes.journal.count("main: terminate engine"), 0);
}

TEST_F(EngineSupervisorTest, FirstFiveExitsAreFollowedByARestartTwoSecondsLaterAndTheSixthIsNot) {
  client->startIfNeeded();
  for (int restart = 1; restart <= 5; ++restart) {
    exit();
    ASSERT_EQ(fakes.mainQueue.delayed.size(), 1U);
    EXPECT_EQ(fakes.mainQueue.delayed.back().seconds, 2.0);
    runDelayed();
    EXPECT_EQ(fakes.launcher.launched.size(), 1U + restart);
  }
  exit();
  EXPECT_THAT(fakes.mainQueue.delayed, IsEmpty());
}

TEST_F(EngineSupervisorTest, RestartThatFailsToStartEndsTheChain) {
  client->startIfNeeded();
  exit();
  fakes.launcher.failure = QStringLiteral("No such file or directory");
  runDelayed();
  EXPECT_THAT(fakes.log.lines,
              ElementsAre("Tavin: could not start engine: No such file or directory"));
  EXPECT_THAT(fakes.mainQueue.delayed, IsEmpty());
}

TEST_F(EngineSupervisorTest, ShutdownTerminatesTheEngineAndItsExitIsNotFollowedByARestart) {
  client->startIfNeeded();
  client->shutdown();
  EXPECT_EQ(fakes.journal.lines().back(), "main: terminate engine");
  exit();
  EXPECT_THAT(fakes.mainQueue.delayed, IsEmpty());
}

TEST_F(EngineSupervisorTest, FailedStartKeepsTheEarlierProcess) {
  client->startIfNeeded();
  exit();
  fakes.launcher.failure = QStringLiteral("gone");
  runDelayed();
  client->shutdown();
  EXPECT_EQ(fakes.journal.count("main: terminate engine"), 1);
}

TEST_F(EngineSupervisorTest, ExitAfterTheClientIsGoneDoesNothing) {
  client->startIfNeeded();
  client.reset();
  exit();
  EXPECT_THAT(fakes.mainQueue.delayed, IsEmpty());
  EXPECT_EQ(fakes.journal.count("main: terminate engine"), 0);
}

TEST_F(EngineSupervisorTest, PendingRestartKeepsTheClientAlive) {
  client->startIfNeeded();
  exit();
  client.reset();
  runDelayed();
  EXPECT_EQ(fakes.launcher.launched.size(), 2U);
}

TEST_F(EngineSupervisorTest, OutputIsAppendedToTheLogAndNeverTruncated) {
  for (const char* run : {"first\n", "second\n"}) {
    const int file = EngineLog::open();
    ASSERT_GE(file, 0);
    ASSERT_GT(::write(file, run, qstrlen(run)), 0);
    ::close(file);
  }
  QFile log(folder.filePath("Library/Logs/Tavin/engine.log"));
  ASSERT_TRUE(log.open(QIODevice::ReadOnly));
  EXPECT_EQ(log.readAll(), "first\nsecond\n");
  client->startIfNeeded();
  EXPECT_GE(launched().output, 0);
}

TEST_F(EngineSupervisorTest, PipeInTheLogsPlaceIsNotWaitedFor) {
  const QString path = folder.filePath("Library/Logs/Tavin/engine.log");
  QDir().mkpath(QFileInfo(path).path());
  ASSERT_EQ(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
  EXPECT_EQ(EngineLog::open(), -1);
  const int reader = ::open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(EngineLog::open(), -1) << "nor is what someone reads a log";
  ::close(reader);
}

TEST_F(EngineSupervisorTest, WritingToTheLogWaitsAsForAnyFile) {
  const int file = EngineLog::open();
  ASSERT_GE(file, 0);
  EXPECT_EQ(fcntl(file, F_GETFL) & (O_NONBLOCK | O_APPEND), O_APPEND);
  ::close(file);
}

TEST_F(EngineSupervisorTest, LogThatCannotBeOpenedIsNoFailure) {
  QFile inTheWay(folder.filePath("Library"));
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  client->startIfNeeded();
  EXPECT_EQ(launched().output, -1);
  EXPECT_THAT(fakes.log.lines, IsEmpty());
}

TEST_F(EngineSupervisorTest, EndOfAnEngineThatWasRunningAlreadyIsToldOnce) {
  fakes.engine.reachable = true;
  client->startIfNeeded();
  client->status();
  EXPECT_THAT(fakes.log.lines, IsEmpty());
  fakes.engine.reachable = false;
  client->status();
  client->post("stop");
  EXPECT_THAT(fakes.log.lines,
              ElementsAre("Tavin: the engine that was running already has ended; Tavin starts its "
                          "own when it is started again"));
  EXPECT_THAT(fakes.launcher.launched, IsEmpty());
}

TEST_F(EngineSupervisorTest, EndOfAnEngineThatWasStartedHereIsNotTold) {
  client->startIfNeeded();
  client->status();
  EXPECT_THAT(fakes.log.lines, IsEmpty());
}

}  // namespace
}  // namespace tavin::test
