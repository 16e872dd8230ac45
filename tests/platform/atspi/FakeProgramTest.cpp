#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/atspi/FakeProgram.h"
#include "platform/atspi/FocusFinder.h"
#include "platform/atspi/TextGatherer.h"
#include "platform/capture/SelectedText.h"

namespace tavin::test {
namespace {

using atspi::ObjectRef;
using atspi::Role;
using Values = std::optional<QVariantList>;

const Values kError = QVariantList();

class FixedPrimary final : public windows::WindowSystem {
 public:
  explicit FixedPrimary(std::optional<QString> text) : text_(std::move(text)) {}
  windows::FrontWindow frontWindow() override { return {}; }
  std::set<std::int64_t> windowProcesses() override { return {}; }
  std::optional<QString> primaryText(const windows::FrontWindow&, PrimaryProof, Deadline) override {
    return text_;
  }

 private:
  const std::optional<QString> text_;
};

// A word processor's document: the paragraphs in view, all between two objects without text.
class ParagraphsTest : public testing::Test {
 protected:
  static constexpr int kParagraphs = 4;

  Values answer(const QString& path, const QString& member) {
    if (path == "/pane" && member == "GetChildren")
      return list({"/document"});
    if (path == "/document" && member == "GetRole")
      return QVariantList{static_cast<quint32>(Role::documentText)};
    if (path == "/document" && member == "GetChildren")
      return list({"/header", "/0", "/1", "/2", "/3", "/footer"});
    bool isParagraph = false;
    const int index = path.mid(1).toInt(&isParagraph);
    if (!isParagraph)
      return kError;
    if (member == silentOn_.second && index == silentOn_.first)
      return std::nullopt;
    if (member == "GetNSelections")
      return QVariantList{selected_.contains(index) ? 1 : 0};
    if (member == "GetSelection")
      return QVariantList{0, 5};
    return member == "GetText" ? Values(QVariantList{QString("text %1").arg(index)}) : kError;
  }
  Values list(const QStringList& paths) {
    QList<ObjectRef> objects;
    for (const auto& path : paths) objects << program_.object(path);
    return QVariantList{QVariant::fromValue(objects)};
  }
  std::optional<QString> read(const std::set<int>& selected,
                              const std::optional<QString>& primary) {
    selected_ = selected;
    capture::FocusTracker tracker(std::make_unique<FixedPrimary>(primary), bus::sessionBus());
    capture::Focus focus;
    focus.window.id = 1;
    focus.program = program_.object("/root");
    focus.object = atspi::FocusedObject();
    focus.object->object = program_.object("/pane");
    std::optional<QString> text;
    EXPECT_TRUE(onWorkQueue([&] {
      ASSERT_TRUE(tracker.bus().connect(Deadline::in(5)));
      text = selectedText(tracker, focus);
    }));
    return text;
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  std::set<int> selected_;
  std::pair<int, QString> silentOn_{-1, {}};
  FakeProgram program_{[this](const QString& path, const QString& member, const QVariantList&) {
    return answer(path, member);
  }};
};

TEST_F(ParagraphsTest, APartInTheMiddleOfTheViewIsWhole) {
  EXPECT_EQ(read({1}, std::nullopt), "text 1");
  EXPECT_EQ(read({1}, "an older text 1"), "text 1");
  EXPECT_EQ(read({}, "an older text 1"), std::nullopt);
}

TEST_F(ParagraphsTest, APartAtTheEdgeOfTheViewMayGoOnBeyondIt) {
  EXPECT_EQ(read({0}, "out of view\ntext 0"), "out of view\ntext 0");
  EXPECT_EQ(read({kParagraphs - 1}, "text 3\nout of view"), "text 3\nout of view");
  EXPECT_EQ(read({0}, "something else"), "text 0");
  EXPECT_EQ(read({0}, std::nullopt), "text 0");
  EXPECT_EQ(read({1, 2}, "text 1 \n text 2\n"), "text 1 \n text 2\n");
  EXPECT_EQ(read({1, 2}, std::nullopt), "text 1\ntext 2");
}

TEST_F(ParagraphsTest, APartThatIsNotToldInTimeIsNeverLeftOut) {
  for (const QString member : {"GetNSelections", "GetText"}) {
    silentOn_ = {2, member};
    EXPECT_EQ(read({1, 2}, std::nullopt), std::nullopt) << member.toStdString();
    EXPECT_EQ(read({1, 2}, "text 1\ntext 2"), "text 1\ntext 2") << member.toStdString();
  }
}

// A page of paragraphs, each behind a mark in its text, of which one does not answer one question.
class PageTest : public testing::Test {
 protected:
  Values answer(const QString& path, const QString& member, const QVariantList& arguments) {
    const int index = path == "/page" ? arguments.value(0).toInt() : path.mid(1).toInt();
    if (member == silentOn_.second && index == silentOn_.first)
      return std::nullopt;
    if (member == "GetNSelections")
      return QVariantList{1};
    if (member == "GetSelection")
      return QVariantList{0, paragraphs_};
    if (member == "GetText")
      return QVariantList{path == "/page" ? QString(paragraphs_, QChar(0xfffc))
                                          : QString("text %1").arg(index)};
    if (member == "GetLinkIndex")
      return QVariantList{index == typedMark_ ? -1 : index};
    if (member == "GetLink" || member == "GetObject")
      return QVariantList{QVariant::fromValue(program_.object(QString("/%1").arg(index)))};
    return member == "GetRole" ? Values(QVariantList{static_cast<quint32>(Role::paragraph)})
                               : kError;
  }
  atspi::GatheredText read(double seconds = 5) {
    atspi::GatheredText text;
    EXPECT_TRUE(onWorkQueue([&] {
      ASSERT_TRUE(bus_.connect(Deadline::in(5)));
      const Deadline deadline = Deadline::in(seconds);
      text = atspi::TextGatherer(bus_, 20'000, deadline).gather(program_.object("/page"));
    }));
    return text;
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  atspi::Bus bus_{bus::sessionBus()};
  int paragraphs_ = 3;
  int typedMark_ = -1;
  std::pair<int, QString> silentOn_{-1, {}};
  FakeProgram program_{
      [this](const QString& path, const QString& member, const QVariantList& arguments) {
        return answer(path, member, arguments);
      }};
};

TEST_F(PageTest, AMarkThatTheAuthorTypedStandsForNoObject) {
  typedMark_ = 1;
  const auto text = read();
  EXPECT_EQ(text.text, "text 0\ntext 2");
  EXPECT_TRUE(text.complete);
}

TEST_F(PageTest, APartThatIsNotToldInTimeIsNeverTakenForNone) {
  for (const QString member : {"GetNSelections", "GetSelection", "GetText", "GetLinkIndex",
                               "GetLink", "GetObject", "GetRole"}) {
    silentOn_ = {1, member};
    const auto text = read();
    EXPECT_FALSE(text.complete) << member.toStdString();
    EXPECT_FALSE(text.text.contains("text 1")) << member.toStdString();
    EXPECT_EQ(text.text.count("text 0"), 1) << member.toStdString();
  }
}

TEST_F(PageTest, ManyPartsDoNotMakeOneAnotherLate) {
  paragraphs_ = 3'000;
  const auto text = read(60);  // A sanitizer takes its time; each question's own limit stays.
  EXPECT_TRUE(text.complete);
  EXPECT_EQ(text.text.count("text"), paragraphs_);
}

class HostileProgramTest : public testing::Test {
 protected:
  void SetUp() override { bus_.setMessageSeconds(60); }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  atspi::Bus bus_{bus::sessionBus()};
  const Deadline deadline_ = Deadline::in(90);
};

// A window with 11 children, the last of which has the focus; the others have 3000 each, and so on.
class EndlessTree {
 public:
  QList<ObjectRef> children(const QString& path) {
    if (path == "/root")
      return {program.object("/window")};
    QList<ObjectRef> many(3'000, program.object("/endless"));
    return path == "/window" ? many.mid(0, 10) + QList{program.object("/window/last")} : many;
  }
  static QList<quint32> states(const QString& path) {
    const quint32 active = path == "/window" ? 1U << atspi::States::active : 0;
    const quint32 focused = path == "/window/last" ? 1U << atspi::States::focused : 0;
    return {active | focused | 1U << atspi::States::visible, 0};
  }

  FakeProgram program{[this](const QString& path, const QString& member, const QVariantList&) {
    if (member == "GetChildren")
      return Values(QVariantList{QVariant::fromValue(children(path))});
    return member == "GetState" ? Values(QVariantList{QVariant::fromValue(states(path))}) : kError;
  }};
};

TEST_F(HostileProgramTest, ATreeWithoutEndIsLookedThroughForItsFirstObjects) {
  EndlessTree tree;
  atspi::FocusSearch search;
  ASSERT_TRUE(onWorkQueue([&] {
    ASSERT_TRUE(bus_.connect(Deadline::in(5)));
    search = findFocus(bus_, tree.program.object("/root"), deadline_);
  }));
  ASSERT_TRUE(search.focus);
  EXPECT_EQ(search.focus->object, tree.program.object("/window/last"));
  EXPECT_FALSE(deadline_.passed());
  EXPECT_LE(tree.program.asked("GetState"), 20'100);
  EXPECT_LE(tree.program.asked("GetChildren"), 250);
}

TEST_F(HostileProgramTest, ATreeWithoutEndIsGivenUpAtTheDeadline) {
  EndlessTree tree;
  bus_.setMessageSeconds(0.3);
  std::chrono::duration<double> taken{};
  ASSERT_TRUE(onWorkQueue([&] {
    ASSERT_TRUE(bus_.connect(Deadline::in(5)));
    const auto start = Deadline::Clock::now();
    findFocus(bus_, tree.program.object("/root"), Deadline::in(0.3));
    taken = Deadline::Clock::now() - start;
  }));
  EXPECT_LT(taken.count(), 1.0);
  EXPECT_LT(tree.program.asked("GetState"), 20'000);
}

TEST_F(HostileProgramTest, SelectionsWithoutEndAreIncomplete) {
  FakeProgram* self = nullptr;
  FakeProgram program([&](const QString& path, const QString& member, const QVariantList&) {
    if (member == "GetNSelections")
      return Values(QVariantList{path == "/top" ? 100 : 1'000'000});
    if (member == "GetSelection")
      return Values(QVariantList{0, 1});
    if (member == "GetText")
      return Values(QVariantList{path == "/top" ? QString(QChar(0xfffc)) : QString("x")});
    if (member == "GetLinkIndex")
      return Values(QVariantList{0});
    if (member == "GetLink" || member == "GetObject")
      return Values(QVariantList{QVariant::fromValue(self->object("/part"))});
    return kError;
  });
  self = &program;
  atspi::GatheredText text;
  ASSERT_TRUE(onWorkQueue([&] {
    ASSERT_TRUE(bus_.connect(Deadline::in(5)));
    text = atspi::TextGatherer(bus_, 20'000, deadline_).gather(program.object("/top"));
  }));
  EXPECT_FALSE(deadline_.passed());
  EXPECT_FALSE(text.complete);
  EXPECT_EQ(program.asked("GetText"), 20'000);
  EXPECT_LE(program.asked("GetSelection"), 20'100);  // The first one of each object in any case.
}

TEST(FakeProgramTest, ObjectsOfWhatIsNoBusNameAreLeftOut) {
  int argumentCount = 0;
  const QCoreApplication application(argumentCount, nullptr);
  const QStringList odd{"no name", "nodot", ":1",     "1.2",
                        "a..b",    "org.ä", ":1.5\n", QString(256, 'a') + ".b"};
  FakeProgram program([&](const QString&, const QString& member, const QVariantList&) -> Values {
    if (member != "GetChildren")
      return kError;
    QList<ObjectRef> children;
    for (const auto& name : odd) children << ObjectRef{name, "/window"};
    children << ObjectRef{"org.a11y.atspi.Registry", "/window"} << program.object("/window");
    return QVariantList{QVariant::fromValue(children)};
  });
  EXPECT_TRUE(onWorkQueue([&] {
    atspi::Bus bus(bus::sessionBus());
    ASSERT_TRUE(bus.connect(Deadline::in(5)));
    EXPECT_EQ(findFocus(bus, program.object("/root"), Deadline::in(5)).windows.size(), 2U);
  }));
}

}  // namespace
}  // namespace tavin::test
