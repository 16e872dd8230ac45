#include <fcntl.h>
#include <gmock/gmock.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <csignal>
#include <future>
#include <thread>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixProcessLauncher.h"

namespace tavin::posix {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr auto deadline = 10s;

QString program(const char* name) {
  const QString self = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
  return self.left(self.lastIndexOf(u'/') + 1) + QLatin1String(name);
}

class PosixProcessLauncherTest : public testing::Test {
 protected:
  PosixProcessLauncherTest() : path_(directory_.filePath(QStringLiteral("output"))) {
    output_ = FileDescriptor(
        open(path_.toLocal8Bit().constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600));
  }

  std::string written() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
  }

  bool isWritten(const std::string& text) const {
    for (const auto end = std::chrono::steady_clock::now() + deadline;
         std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(2ms)) {
      if (written().find(text) != std::string::npos)
        return true;
    }
    return false;
  }

  ProcessDescription child(const QStringList& arguments) const {
    return {.executable = program("launched_child"),
            .arguments = arguments,
            .workingDirectory = {},
            .environment = {},
            .output = output_.get()};
  }

  std::shared_ptr<ChildProcess> start(const ProcessDescription& description) {
    auto result = launcher_.launch(description, [exited = exited_] { exited->set_value(); });
    if (const auto* error = std::get_if<LaunchError>(&result)) {
      ADD_FAILURE() << error->description.toStdString();
      return nullptr;
    }
    return std::get<std::shared_ptr<ChildProcess>>(result);
  }

  bool hasExited(std::chrono::milliseconds within = deadline) {
    return exitedFuture_.wait_for(within) == std::future_status::ready;
  }

  std::string errorOf(const ProcessDescription& description) {
    auto result = launcher_.launch(description, [exited = exited_] { exited->set_value(); });
    const auto* error = std::get_if<LaunchError>(&result);
    return error != nullptr ? error->description.toStdString() : "started";
  }

  QTemporaryDir directory_;
  QString path_;
  FileDescriptor output_;
  PosixProcessLauncher launcher_;
  // Shared: a child may outlive its test.
  std::shared_ptr<std::promise<void>> exited_ = std::make_shared<std::promise<void>>();
  std::future<void> exitedFuture_ = exited_->get_future();
};

TEST_F(PosixProcessLauncherTest, GivesArgumentsAsTheyAre) {
  start(child({"report", "-m", "two words", "", "Größe"}));
  ASSERT_TRUE(isWritten("end of the report"));
  EXPECT_THAT(written(),
              HasSubstr("argument -m\nargument two words\nargument \nargument Größe\nenvironment"));
}

TEST_F(PosixProcessLauncherTest, MergesTheEnvironmentAndKeepsItsOwn) {
  setenv("TAVIN_TEST_KEPT", "kept", 1);
  setenv("TAVIN_TEST_CHANGED", "before", 1);
  ProcessDescription description = child({"report"});
  description.environment = {{"TAVIN_TEST_CHANGED", "after"}, {"TAVIN_TEST_NEW", "a=b:c"}};
  start(description);
  ASSERT_TRUE(isWritten("end of the report"));
  EXPECT_THAT(written(), AllOf(HasSubstr("environment TAVIN_TEST_KEPT=kept\n"),
                               HasSubstr("environment TAVIN_TEST_CHANGED=after\n"),
                               HasSubstr("environment TAVIN_TEST_NEW=a=b:c\n"),
                               Not(HasSubstr("TAVIN_TEST_CHANGED=before"))));
  EXPECT_STREQ(getenv("TAVIN_TEST_CHANGED"), "before");
  EXPECT_EQ(getenv("TAVIN_TEST_NEW"), nullptr);
}

TEST_F(PosixProcessLauncherTest, ChildGetsThePythonpathGivenForItEvenWhereTheProgramHasOne) {
  setenv("PYTHONPATH", "/of/the/program", 1);
  ProcessDescription description = child({"report"});
  description.environment = {{"PYTHONPATH", "/engine:/engine/site-packages"}};
  start(description);
  ASSERT_TRUE(isWritten("end of the report"));
  EXPECT_THAT(written(), AllOf(HasSubstr("environment PYTHONPATH=/engine:/engine/site-packages\n"),
                               Not(HasSubstr("/of/the/program"))));
  EXPECT_STREQ(getenv("PYTHONPATH"), "/of/the/program");
  unsetenv("PYTHONPATH");
}

TEST_F(PosixProcessLauncherTest, GivesTheInputThatIsGivenForIt) {
  ProcessDescription description = child({"report"});
  description.input = output_.get();
  start(description);
  ASSERT_TRUE(isWritten("end of the report"));
  EXPECT_THAT(written(), AllOf(HasSubstr("input is null: 0\n"), Not(HasSubstr("file 3\n"))));
}

TEST_F(PosixProcessLauncherTest, AProgramThatIsNotAwaitedEndsAtOnceWhereItCannotBeRun) {
  ProcessDescription description = child({"report"});
  description.executable = "/nonexistent";
  description.awaited = false;
  start(description);
  EXPECT_TRUE(hasExited());
}

TEST_F(PosixProcessLauncherTest, EndsAStoppedChildAtOnce) {
  const auto process = start(child({"wait"}));
  ASSERT_TRUE(isWritten("ready"));
  ::kill(std::stoi(written().substr(6)), SIGSTOP);
  process->terminate();
  EXPECT_FALSE(hasExited(100ms)) << "being asked is not enough";
  process->kill();
  EXPECT_TRUE(hasExited());
}

TEST_F(PosixProcessLauncherTest, RunsInTheWorkingDirectory) {
  ProcessDescription description = child({"report"});
  description.workingDirectory = directory_.path();
  start(description);
  EXPECT_TRUE(isWritten("directory " + directory_.path().toStdString() + "\n"));
}

TEST_F(PosixProcessLauncherTest, AppendsBothStreamsToTheOutput) {
  ASSERT_EQ(write(output_.get(), "earlier run\n", 12), 12);
  start(child({"report"}));
  ASSERT_TRUE(isWritten("end of the report"));
  EXPECT_THAT(written(), testing::StartsWith("earlier run\nenvironment "));
}

TEST_F(PosixProcessLauncherTest, StartsWithoutOutput) {
  ProcessDescription description = child({"report"});
  description.output = -1;
  EXPECT_NE(start(description), nullptr);
  EXPECT_TRUE(hasExited());
}

TEST_F(PosixProcessLauncherTest, LeaksNoFileSignalOrInput) {
  // A careless library's file, and signal settings that an exec would keep.
  const FileDescriptor leaky(open("/dev/null", O_RDONLY));
  struct sigaction ignore = {};
  ignore.sa_handler = SIG_IGN;
  struct sigaction before = {};
  sigaction(SIGPIPE, &ignore, &before);
  sigset_t blocked;
  sigset_t maskBefore;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  pthread_sigmask(SIG_BLOCK, &blocked, &maskBefore);
  start(child({"report"}));
  pthread_sigmask(SIG_SETMASK, &maskBefore, nullptr);
  sigaction(SIGPIPE, &before, nullptr);
  ASSERT_TRUE(isWritten("end of the report"));
  EXPECT_THAT(written(), HasSubstr("file 0\nfile 1\nfile 2\ninput is null: 1\nend"));
}

TEST_F(PosixProcessLauncherTest, StartsWhenTheStandardFilesAreClosed) {
  // In a process of its own that runs this test again: a fork of this one could start no threads.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto startWithout = [this] {
    close(0);
    close(1);
    const bool ran = start(child({"report"})) != nullptr && hasExited();
    std::fputs(written().c_str(), stderr);
    _exit(ran ? 0 : 1);
  };
  EXPECT_EXIT(startWithout(), testing::ExitedWithCode(0),
              HasSubstr("file 0\nfile 1\nfile 2\ninput is null: 1\nend"));
}

TEST_F(PosixProcessLauncherTest, SaysWhyAProgramCannotRun) {
  ProcessDescription description = child({});
  description.executable = QStringLiteral("/nowhere/python");
  EXPECT_EQ(errorOf(description), "/nowhere/python: No such file or directory");
  description.executable = directory_.path();
  EXPECT_EQ(errorOf(description), directory_.path().toStdString() + ": Permission denied");
  description.executable = QStringLiteral("sh");  // Not looked up in PATH.
  EXPECT_EQ(errorOf(description), "sh: No such file or directory");
  EXPECT_FALSE(hasExited(50ms)) << "only a child that started can exit";
}

TEST_F(PosixProcessLauncherTest, SaysWhyTheDirectoryCannotBeUsed) {
  ProcessDescription description = child({"report"});
  description.workingDirectory = QStringLiteral("/nowhere");
  EXPECT_EQ(errorOf(description), "/nowhere: No such file or directory");
}

TEST_F(PosixProcessLauncherTest, LeavesNoZombieOfAFailedStart) {
  ProcessDescription description = child({});
  description.executable = QStringLiteral("/nowhere/python");
  errorOf(description);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixProcessLauncherTest, TellsTheExitOnAnotherThread) {
  const auto told = std::make_shared<std::promise<std::thread::id>>();
  auto result =
      launcher_.launch(child({"report"}), [told] { told->set_value(std::this_thread::get_id()); });
  auto thread = told->get_future();
  ASSERT_EQ(thread.wait_for(deadline), std::future_status::ready);
  EXPECT_NE(thread.get(), std::this_thread::get_id());
}

TEST_F(PosixProcessLauncherTest, AsksPolitelyToEnd) {
  const auto process = start(child({"wait"}));
  ASSERT_TRUE(isWritten("ready"));
  process->terminate();
  EXPECT_TRUE(hasExited());
  EXPECT_THAT(written(), HasSubstr("asked\n"));
  process->terminate();  // It has ended; nobody else gets the signal.
}

TEST_F(PosixProcessLauncherTest, LeavesAReleasedChildAlone) {
  auto process = start(child({"wait"}));
  ASSERT_TRUE(isWritten("ready"));
  std::weak_ptr<ChildProcess> handle = process;
  process.reset();
  EXPECT_FALSE(hasExited(100ms));
  kill(std::stoi(written().substr(6)), SIGTERM);
  EXPECT_TRUE(hasExited());
}

TEST_F(PosixProcessLauncherTest, AsksTheChildToEndWhenTheParentIsKilled) {
  const std::string parentProgram = program("launching_parent").toStdString();
  const std::string childProgram = program("launched_child").toStdString();
  const std::string path = path_.toStdString();
  const pid_t parent = fork();
  if (parent == 0) {
    execl(parentProgram.c_str(), parentProgram.c_str(), path.c_str(), childProgram.c_str(),
          nullptr);
    _exit(127);
  }
  ASSERT_TRUE(isWritten("ready"));
  kill(parent, SIGKILL);
  EXPECT_TRUE(isWritten("asked"));
  waitpid(parent, nullptr, 0);
}

// Asks for stacks that no machine has, so that no new thread can be started.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&before_);
    pthread_attr_t none;
    pthread_attr_init(&none);
    pthread_attr_setstacksize(&none, std::size_t{1} << 46);
    EXPECT_EQ(pthread_setattr_default_np(&none), 0);
    pthread_attr_destroy(&none);
  }
  ~NoThreads() {
    pthread_setattr_default_np(&before_);
    pthread_attr_destroy(&before_);
  }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

 private:
  pthread_attr_t before_;
};

TEST_F(PosixProcessLauncherTest, WithoutAThreadToWatchItNoChildIsKept) {
  {
    const NoThreads here;
    EXPECT_EQ(errorOf(child({"wait"})), "Resource temporarily unavailable");
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
  EXPECT_NE(start(child({"report"})), nullptr);
  EXPECT_TRUE(hasExited());
}

}  // namespace
}  // namespace tavin::posix
