#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>

#include "platform/atspi/FakeProgram.h"
#include "platform/capture/ProgramFinder.h"

namespace tavin::test {
namespace {

using atspi::ObjectRef;
using atspi::States;
using Values = std::optional<QVariantList>;

const Values kUnknown = QVariantList();

class KnownProcesses final : public windows::WindowSystem {
 public:
  explicit KnownProcesses(std::set<std::int64_t> processes) : processes_(std::move(processes)) {}
  windows::FrontWindow frontWindow() override { return {}; }
  std::set<std::int64_t> windowProcesses() override { return processes_; }
  std::optional<QString> primaryText(const windows::FrontWindow&, PrimaryProof, Deadline) override {
    return std::nullopt;
  }

 private:
  const std::set<std::int64_t> processes_;
};

// A program with one window, in front or not, and a field in it that claims the focus either way.
class WindowedProgram {
 public:
  explicit WindowedProgram(bool inFront) : inFront_(inFront) { program.enter("/root"); }

 private:
  Values answer(const QString& path, const QString& member) {
    if (member == "GetChildren")
      return children(path == "/root" ? "/window" : path == "/window" ? "/field" : QString());
    if (member == "GetState") {
      const quint32 shown = 1U << States::visible;
      const quint32 active = inFront_ && path == "/window" ? 1U << States::active : 0;
      const quint32 focused = path == "/field" ? 1U << States::focused : 0;
      return QVariantList{QVariant::fromValue(QList<quint32>{shown | active | focused, 0})};
    }
    return kUnknown;
  }
  Values children(const QString& path) {
    QList<ObjectRef> list;
    if (!path.isEmpty())
      list << program.object(path);
    return QVariantList{QVariant::fromValue(list)};
  }

  const bool inFront_;

 public:
  FakeProgram program{[this](const QString& path, const QString& member, const QVariantList&) {
    return answer(path, member);
  }};
};

class ProgramFinderTest : public testing::Test {
 protected:
  void SetUp() override {
    silent_.enter("/root");
    ASSERT_TRUE(eventually([this] {
      bool listed = false;
      onWorkQueue([&] { listed = bus_.connect(Deadline::in(5)) && allAreListed(); });
      return listed;
    }));
  }
  bool allAreListed() {
    const auto programs = bus_.programs(Deadline::in(5));
    const auto isListed = [&](const FakeProgram& program) {
      return std::count(programs.begin(), programs.end(), program.object("/root")) == 1;
    };
    return isListed(silent_) && isListed(behind_.program) && isListed(front_.program);
  }
  std::optional<capture::FoundProgram> find(std::int64_t process,
                                            const std::set<std::int64_t>& windowProcesses) {
    KnownProcesses windows(windowProcesses);
    windows::FrontWindow front;
    front.id = 1;
    front.processId = process;
    std::optional<capture::FoundProgram> found;
    EXPECT_TRUE(onWorkQueue(
        [&] { found = capture::findProgram(bus_, windows, front, Deadline::in(kSecondsToFind)); }));
    return found;
  }

  static constexpr double kSecondsToFind = 5;
  static constexpr std::int64_t kOtherProcess = 1;

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  FakeProgram silent_{
      [](const QString&, const QString&, const QVariantList&) { return Values(std::nullopt); }};
  WindowedProgram behind_{false};
  WindowedProgram front_{true};
  atspi::Bus bus_{bus::sessionBus()};
};

TEST_F(ProgramFinderTest, WithoutAProcessAllAreAskedAtOnceForTheirActiveWindow) {
  QElapsedTimer timer;
  timer.start();
  const auto found = find(0, {getpid()});
  ASSERT_TRUE(found);
  EXPECT_EQ(found->program, front_.program.object("/root"));
  ASSERT_TRUE(found->search.focus);
  EXPECT_EQ(found->search.focus->object, front_.program.object("/field"));
  // One that never answers kept nobody waiting, and one behind was not searched.
  EXPECT_LT(timer.elapsed(), 250);
  EXPECT_EQ(silent_.asked("GetChildren"), 1);
  EXPECT_EQ(behind_.program.asked("GetMatches"), 0);
}

TEST_F(ProgramFinderTest, WithAProcessThatIsNotOnTheBusThoseWithoutWindowsAreAsked) {
  const auto found = find(kOtherProcess, {});
  ASSERT_TRUE(found);
  EXPECT_EQ(found->program, front_.program.object("/root"));
}

TEST_F(ProgramFinderTest, WithAProcessThatIsNotOnTheBusThoseWithWindowsAreOthers) {
  EXPECT_FALSE(find(kOtherProcess, {getpid()}));
}

}  // namespace
}  // namespace tavin::test
