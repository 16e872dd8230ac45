#include <fcntl.h>
#include <gtest/gtest.h>

#include <QFile>

#include "SocketPair.h"
#include "platform/windowlink/WindowProgram.h"

namespace tavin::windowlink {
namespace {

using namespace tavin::test;

constexpr int patienceMs = 300;

// A program of which the test plays the part, on the other end of its socket.
struct Started {
  ProcessDescription description;
  posix::FileDescriptor socket;
  bool killed = false;
  QList<QByteArray> messages;
  bool closed = false;  // By Tavin.
  std::unique_ptr<Channel> channel;

  void listen() {
    channel = std::make_unique<Channel>(
        std::move(socket), 1 << 28,
        [this](const QByteArray& message) {
          messages.append(QByteArray(message.constData(), message.size()));
        },
        [this] { closed = true; });
  }
  template <typename Kind>
  std::optional<Kind> told() const {
    for (const QByteArray& message : messages)
      if (const auto request = decodeRequest(message))
        if (const auto* kind = std::get_if<Kind>(&*request))
          return *kind;
    return std::nullopt;
  }
  void tell(const Event& event) const { channel->send(encode(event)); }
  void end() { channel.reset(); }
};

class Launcher final : public ProcessLauncher {
 public:
  struct Child final : ChildProcess {
    explicit Child(std::shared_ptr<Started> program) : started(std::move(program)) {}
    void terminate() override {}
    void kill() override { started->killed = true; }
    std::shared_ptr<Started> started;
  };

  std::variant<std::shared_ptr<ChildProcess>, LaunchError> launch(
      const ProcessDescription& description, std::function<void()> /*onExit*/) override {
    auto program = std::make_shared<Started>();
    program->description = description;
    program->socket = posix::FileDescriptor(::fcntl(description.input, F_DUPFD_CLOEXEC, 3));
    if (listens)
      program->listen();
    started.push_back(program);
    return std::make_shared<Child>(program);
  }

  bool listens = true;
  std::vector<std::shared_ptr<Started>> started;
};

class Log final : public SystemLog {
 public:
  void write(const QString& line) override { lines.append(line); }
  QStringList lines;
};

class WindowProgramTest : public testing::Test, protected WithEventLoop {
 protected:
  void show(const char* heading = "heading") {
    program->showAlert({heading, "text", {}, true}, true,
                       [this](const AlertResponse& response) { answers.push_back(response); });
  }
  void openMenu() {
    program->showMenu(std::nullopt, {},
                      [this](std::optional<quint32> chosen) { closings.push_back(chosen); });
  }
  void showIcon() {
    program->showIcon("waveform", "Tavin", [this] { ++clicks; });
  }
  Started& last() { return *launcher.started.back(); }
  template <typename Kind>
  Kind hears() {
    EXPECT_TRUE(waitUntil([this] { return last().told<Kind>().has_value(); }));
    return last().told<Kind>().value_or(Kind());
  }

  Launcher launcher;
  Log log;
  std::vector<AlertResponse> answers;
  std::vector<std::optional<quint32>> closings;
  int clicks = 0;
  // Any program that there is: the launcher starts none.
  std::unique_ptr<WindowProgram> program = std::make_unique<WindowProgram>(
      launcher, log, WindowProgram::Place{"/proc/self/exe", "xcb", patienceMs, 10});
};

TEST_F(WindowProgramTest, IsStartedWhenSomethingIsToBeShownWithNothingInItsArguments) {
  EXPECT_TRUE(launcher.started.empty());
  show("a heading");
  ASSERT_EQ(launcher.started.size(), 1U);
  EXPECT_EQ(last().description.arguments, QStringList("xcb"));
  EXPECT_TRUE(last().description.environment.empty());
  EXPECT_FALSE(last().description.awaited);
  EXPECT_EQ(hears<ShowAlert>().alert.messageText, "a heading");
}

TEST_F(WindowProgramTest, AnAnswerIsToldOnceAsItWasGiven) {
  show();
  const quint32 id = hears<ShowAlert>().id;
  last().tell(AlertAnswered{id, {1001, " key "}});
  last().tell(AlertAnswered{id, {1000, "again"}});
  ASSERT_TRUE(waitUntil([&] { return !answers.empty(); }));
  waitUntil([turns = 0]() mutable { return ++turns > 20; });
  ASSERT_EQ(answers.size(), 1U);
  EXPECT_EQ(answers[0].button, 1001);
  EXPECT_EQ(answers[0].text, " key ");
}

TEST_F(WindowProgramTest, AnAnswerToWhatIsNotOpenAnyMoreIsNone) {
  show();
  const quint32 id = hears<ShowAlert>().id;
  program->closeAlert();
  show();
  last().tell(AlertAnswered{id, {1000, "to the first"}});
  last().tell(AlertAnswered{id + 1, {1001, "to the second"}});
  ASSERT_TRUE(waitUntil([&] { return !answers.empty(); }));
  EXPECT_EQ(answers[0].text, "to the second");
}

TEST_F(WindowProgramTest, WhereItEndsWhatIsOpenIsClosedAndTheNextStartsAnother) {
  show();
  openMenu();
  hears<ShowMenu>();
  last().tell(Pong());
  last().end();
  ASSERT_TRUE(waitUntil([&] { return answers.size() == 1 && closings.size() == 1; }));
  EXPECT_EQ(answers[0].button, 0);
  EXPECT_EQ(closings[0], std::nullopt);
  ASSERT_EQ(log.lines.size(), 1);
  EXPECT_TRUE(log.lines[0].contains("ended by itself"));
  show("next");
  ASSERT_EQ(launcher.started.size(), 2U);
  EXPECT_EQ(hears<ShowAlert>().alert.messageText, "next");
}

TEST_F(WindowProgramTest, AnAlertThatItNeverAnsweredForIsShownOnceMore) {
  show("shown late");
  hears<ShowAlert>();
  last().end();
  ASSERT_TRUE(waitUntil([&] { return launcher.started.size() == 2; }));
  EXPECT_EQ(hears<ShowAlert>().alert.messageText, "shown late");
  EXPECT_TRUE(answers.empty());
  EXPECT_FALSE(log.lines.value(0).contains("closed"));
  last().end();
  ASSERT_TRUE(waitUntil([&] { return answers.size() == 1; }));
  EXPECT_EQ(launcher.started.size(), 2U);
  EXPECT_TRUE(log.lines.value(1).contains("closed"));
}

TEST_F(WindowProgramTest, OneThatHangsWithNothingToShowIsKilled) {
  show();
  hears<Ping>();
  last().tell(Pong());
  last().tell(AlertAnswered{hears<ShowAlert>().id, {1000, ""}});
  hears<Finish>();
  ASSERT_TRUE(waitUntil([&] { return last().killed; }));
  EXPECT_TRUE(log.lines.value(0).endsWith("does not answer"));
}

TEST_F(WindowProgramTest, OneThatStaysForTheClipboardIsAskedOnceAndLeftAlone) {
  show();
  hears<Ping>();
  last().tell(Pong());
  last().tell(AlertAnswered{hears<ShowAlert>().id, {1000, ""}});
  hears<Finish>();
  last().tell(Pong());
  const auto told = last().messages.size();
  QElapsedTimer waited;
  waited.start();
  waitUntil([&] { return waited.elapsed() > 2500; });
  EXPECT_EQ(last().messages.size(), told);
  EXPECT_FALSE(last().killed);
  last().tell(Finished());
  ASSERT_TRUE(waitUntil([&] { return last().closed; }));
}

TEST_F(WindowProgramTest, OneThatHangsWithAMenuOpenIsKilledSooner) {
  program = std::make_unique<WindowProgram>(
      launcher, log, WindowProgram::Place{"/proc/self/exe", "xcb", 60'000, 10, patienceMs});
  openMenu();
  hears<Ping>();
  last().tell(Pong());
  ASSERT_TRUE(waitUntil([&] { return closings.size() == 1; }));
  EXPECT_TRUE(last().killed);
}

TEST_F(WindowProgramTest, OneThatDoesNotAnswerIsKilledAndWhatIsOpenIsClosed) {
  launcher.listens = false;
  show();
  EXPECT_TRUE(answers.empty());
  ASSERT_TRUE(waitUntil([&] { return !answers.empty(); }));
  EXPECT_EQ(answers[0].button, 0);
  EXPECT_TRUE(last().killed);
  EXPECT_TRUE(log.lines.value(0).contains("does not answer"));
}

TEST_F(WindowProgramTest, OneThatAnswersIsGivenAllTheTimeThatTheUserTakes) {
  show();
  hears<Ping>();
  last().tell(Pong());
  QElapsedTimer waited;
  waited.start();
  waitUntil([&] { return waited.elapsed() > 3 * patienceMs; });
  EXPECT_TRUE(answers.empty());
  EXPECT_FALSE(last().killed);
}

TEST_F(WindowProgramTest, OneThatTalksNonsenseIsKilledAndWhatIsOpenIsClosed) {
  for (const QByteArray& nonsense : {QByteArray("\xff"), QByteArray(), QByteArray(1000, 'x')}) {
    answers.clear();
    show();
    hears<ShowAlert>();
    last().tell(Pong());
    last().channel->send(nonsense);
    ASSERT_TRUE(waitUntil([&] { return !answers.empty(); }));
    EXPECT_EQ(answers[0].button, 0);
    EXPECT_TRUE(last().killed);
  }
}

TEST_F(WindowProgramTest, OneThatSaysMoreThanAnyoneTypesIsKilled) {
  show();
  hears<ShowAlert>();
  last().tell(AlertAnswered{1, {1000, QString(2'000'000, 'x')}});
  ASSERT_TRUE(waitUntil([&] { return !answers.empty(); }));
  EXPECT_EQ(answers[0].text, "");
  EXPECT_TRUE(last().killed);
}

TEST_F(WindowProgramTest, AMissingProgramClosesWhatWasToBeShown) {
  program = std::make_unique<WindowProgram>(
      launcher, log, WindowProgram::Place{"/nonexistent", "xcb", patienceMs, 10});
  show();
  EXPECT_TRUE(answers.empty()) << "not before the caller is done";
  ASSERT_TRUE(waitUntil([&] { return !answers.empty(); }));
  EXPECT_EQ(answers[0].button, 0);
  EXPECT_TRUE(log.lines.value(0).contains("/nonexistent"));
}

TEST_F(WindowProgramTest, EndsAfterTheLastUnlessSomethingElseIsToBeShown) {
  show();
  hears<Ping>();
  last().tell(Pong());
  last().tell(AlertAnswered{hears<ShowAlert>().id, {1000, ""}});
  hears<Finish>();
  show();
  last().tell(Finished());  // It crossed the new alert.
  last().tell(AlertAnswered{2, {1000, ""}});
  ASSERT_TRUE(waitUntil([&] { return answers.size() == 2; }));
  EXPECT_EQ(launcher.started.size(), 1U);
  EXPECT_FALSE(last().killed);
  last().tell(Finished());
  ASSERT_TRUE(waitUntil([&] { return last().closed; }));
  EXPECT_TRUE(log.lines.isEmpty());
}

TEST_F(WindowProgramTest, AProgramThatAlwaysEndsIsNotStartedForTheIconWithoutEnd) {
  showIcon();
  for (std::size_t starts = 1; starts <= 6; ++starts) {
    ASSERT_TRUE(waitUntil([&] { return launcher.started.size() == starts; })) << starts;
    last().end();
  }
  ASSERT_TRUE(waitUntil([&] { return log.lines.size() == 6; }));
  QElapsedTimer waited;
  waited.start();
  waitUntil([&] { return waited.elapsed() > 200; });
  EXPECT_EQ(launcher.started.size(), 6U);
}

TEST_F(WindowProgramTest, TheIconIsShownAgainWhereTheProgramEnded) {
  showIcon();
  EXPECT_EQ(hears<ShowIcon>().symbol, "waveform");
  last().tell(IconClicked());
  ASSERT_TRUE(waitUntil([&] { return clicks == 1; }));
  last().end();
  ASSERT_TRUE(waitUntil([&] { return launcher.started.size() == 2; }));
  EXPECT_EQ(hears<ShowIcon>().symbol, "waveform");
  last().tell(Pong());
  program->hideIcon();
  hears<Finish>();
}

TEST_F(WindowProgramTest, DestroyingItEndsTheProgramAndTellsNobody) {
  show();
  program.reset();
  EXPECT_TRUE(last().killed);
  waitUntil([turns = 0]() mutable { return ++turns > 20; });
  EXPECT_TRUE(answers.empty());
}

}  // namespace
}  // namespace tavin::windowlink
