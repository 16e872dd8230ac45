#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/atspi/FakeProgram.h"
#include "platform/atspi/FocusFinder.h"
#include "platform/atspi/SelectedText.h"
#include "platform/atspi/TextGatherer.h"

namespace tavin::test {
namespace {

using atspi::ObjectRef;
using atspi::Role;
using Values = std::optional<QVariantList>;

const Values kError = QVariantList();

class FixedPrimary final : public atspi::WindowSystem {
 public:
  explicit FixedPrimary(std::optional<QString> text) : text_(std::move(text)) {}
  atspi::FrontWindow frontWindow() override { return {}; }
  std::set<std::int64_t> windowProcesses() override { return {}; }
  std::optional<QString> primaryText(const atspi::FrontWindow&, PrimaryProof, Deadline) override {
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
    atspi::FocusTracker tracker(std::make_unique<FixedPrimary>(primary));
    atspi::Focus focus;
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

class HostileProgramTest : public testing::Test {
 protected:
  void SetUp() override { bus_.setMessageSeconds(60); }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  atspi::Bus bus_;
  const Deadline deadline_ = Deadline::in(90);
};

TEST_F(HostileProgramTest, ATreeWithoutEndIsLookedThroughForItsFirstObjects) {
  std::function<QList<ObjectRef>(const QString&)> children;
  FakeProgram program([&](const QString& path, const QString& member, const QVariantList&) {
    if (member == "GetChildren")
      return Values(QVariantList{QVariant::fromValue(children(path))});
    if (member == "GetState") {
      const quint32 active = path == "/window" ? 1U << atspi::States::active : 0;
      const quint32 focused = path == "/window/last" ? 1U << atspi::States::focused : 0;
      const quint32 visible = 1U << atspi::States::visible;
      return Values(
          QVariantList{QVariant::fromValue(QList<quint32>{active | focused | visible, 0})});
    }
    return kError;
  });
  QList<ObjectRef> many(3'000, program.object("/endless"));
  children = [&](const QString& path) -> QList<ObjectRef> {
    if (path == "/root")
      return {program.object("/window")};
    if (path == "/window")
      return many.mid(0, 10) + QList{program.object("/window/last")};
    return many;
  };
  atspi::FocusSearch search;
  ASSERT_TRUE(onWorkQueue([&] {
    ASSERT_TRUE(bus_.connect(Deadline::in(5)));
    search = findFocus(bus_, program.object("/root"), deadline_);
  }));
  ASSERT_TRUE(search.focus);
  EXPECT_EQ(search.focus->object, program.object("/window/last"));
  EXPECT_FALSE(deadline_.passed());
  EXPECT_LE(program.asked("GetState"), 20'100);
  EXPECT_LE(program.asked("GetChildren"), 250);
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

}  // namespace
}  // namespace tavin::test
