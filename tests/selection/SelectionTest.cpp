#include <gmock/gmock.h>

#include <chrono>

#include "fake/FakeSelectionSource.h"
#include "selection/Selection.h"

namespace tavin::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using Clock = std::chrono::steady_clock;

PasteboardItem item(std::initializer_list<std::pair<QString, QByteArray>> types) {
  return {.types = types};
}

class SelectionTest : public ::testing::Test {
 protected:
  void copies(const QString& text) {
    keyboard.onCommandC = [this, text] { pasteboard.copied({item({{"text", text.toUtf8()}})}); };
  }

  Journal journal;
  FakeAccessibility accessibility{journal};
  FakeKeyboard keyboard{journal};
  FakePasteboard pasteboard{journal};
  const Selection selection{accessibility, keyboard, pasteboard};
};

TEST_F(SelectionTest, TrustIsAskedWithThePromptGiven) {
  EXPECT_TRUE(selection.isTrusted(false));
  accessibility.trusted = false;
  EXPECT_FALSE(selection.isTrusted(true));
  EXPECT_THAT(journal.lines(), ElementsAre("main: trusted? prompt=0", "main: trusted? prompt=1"));
}

TEST_F(SelectionTest, AccessibilityIsAskedInOrderAndAnswersWithoutACopy) {
  accessibility.selectedText = QStringLiteral("text");
  EXPECT_EQ(selection.current(), QStringLiteral("text"));
  EXPECT_THAT(journal.lines(),
              ElementsAre("main: messaging timeout 0.3", "main: copy AXFocusedUIElement",
                          "main: copy AXSelectedText"));
}

TEST_F(SelectionTest, LeadingSpaceAndTrailingLineBreakSurvive) {
  accessibility.selectedText = QStringLiteral(" text\n");
  EXPECT_EQ(selection.viaAccessibility(), QStringLiteral(" text\n"));
}

TEST_F(SelectionTest, BlankSelectionGoesOnToTheCopyWhichIsAbsentToo) {
  accessibility.selectedText = QStringLiteral(" \n\t\u00a0\u2003");
  copies(QStringLiteral(" \n"));
  EXPECT_EQ(selection.viaAccessibility(), std::nullopt);
  EXPECT_EQ(selection.current(), std::nullopt);
  EXPECT_EQ(journal.count("main: read string"), 1);
}

TEST_F(SelectionTest, MissingSelectedTextFallsThroughToTheCopy) {
  copies(QStringLiteral(" copied "));
  EXPECT_EQ(selection.current(), QStringLiteral(" copied "));
}

TEST_F(SelectionTest, MissingFocusedElementFallsThroughToTheCopy) {
  accessibility.hasFocusedElement = false;
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.current(), QStringLiteral("copied"));
}

TEST_F(SelectionTest, FocusedElementOrTextOfAnotherKindIsAbsent) {
  accessibility.focusedElement = QStringLiteral("no element");
  EXPECT_EQ(selection.viaAccessibility(), std::nullopt);
  accessibility.focusedElement.reset();
  accessibility.selectedText = OtherValue{};
  EXPECT_EQ(selection.viaAccessibility(), std::nullopt);
}

TEST_F(SelectionTest, CopySavesPostsReadsAndRestoresInOrder) {
  pasteboard.items = {item({{"text", "mine"}})};
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_THAT(journal.lines(),
              ElementsAre("main: read pasteboard", "main: key 8 down flags 0x100000",
                          "main: key 8 up flags 0x100000", "main: read string",
                          "main: clear pasteboard", "main: write 1 items"));
  EXPECT_EQ(pasteboard.items, std::vector{item({{"text", "mine"}})});
}

TEST_F(SelectionTest, TwoItemsComeBackWithTheirTypesInOrderAndAnEmptyItemToo) {
  const std::vector saved{
      item({{"text", "a"}, {"html", "<b>a</b>"}, {"png", QByteArray("\0\1", 2)}}),
      item({{"uri", "file:///b"}, {"text", "b"}}), item({})};
  pasteboard.items = saved;
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_EQ(pasteboard.items, saved);
}

TEST_F(SelectionTest, EmptyPasteboardIsClearedAndNothingIsWritten) {
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_TRUE(pasteboard.items.empty());
  EXPECT_TRUE(journal.starting("main: write").empty());
  EXPECT_EQ(journal.count("main: clear pasteboard"), 1);
}

TEST_F(SelectionTest, CopyWithoutTextIsAbsentAndThePasteboardIsRestored) {
  pasteboard.items = {item({{"text", "mine"}})};
  keyboard.onCommandC = [this] { pasteboard.copied({item({{"png", "image"}})}); };
  EXPECT_EQ(selection.viaCopy(), std::nullopt);
  EXPECT_EQ(pasteboard.items, std::vector{item({{"text", "mine"}})});
}

TEST_F(SelectionTest, CopyThatChangesNothingIsAbsentAfterItsWaitAndTouchesNothing) {
  pasteboard.items = {item({{"text", "mine"}})};
  const auto start = Clock::now();
  EXPECT_EQ(selection.viaCopy(), std::nullopt);
  EXPECT_GE(Clock::now() - start, 400ms);
  EXPECT_LT(Clock::now() - start, 2s);
  EXPECT_THAT(journal.lines(),
              ElementsAre("main: read pasteboard", "main: key 8 down flags 0x100000",
                          "main: key 8 up flags 0x100000"));
}

TEST_F(SelectionTest, PasteboardThatCannotBeReadIsNeverTouched) {
  pasteboard.readable = false;
  EXPECT_EQ(selection.viaCopy(), std::nullopt);
  EXPECT_THAT(journal.lines(), ElementsAre("main: read pasteboard"));
}

TEST_F(SelectionTest, ChangeWhileThePasteboardIsReadIsNotTakenForTheCopy) {
  pasteboard.onRead = [this] { pasteboard.copied({item({{"text", "by another program"}})}); };
  EXPECT_EQ(selection.viaCopy(), std::nullopt);
  EXPECT_THAT(journal.lines(),
              ElementsAre("main: read pasteboard", "main: key 8 down flags 0x100000",
                          "main: key 8 up flags 0x100000"));
}

TEST_F(SelectionTest, ChangeWhileTheModifiersAreHeldIsTakenForTheCopy) {
  pasteboard.items = {item({{"text", "mine"}})};
  int looks = 0;
  keyboard.flags = [&]() -> std::uint64_t {
    if (++looks > 1)
      return 0;
    pasteboard.copied({item({{"text", "copied"}})});
    return EventFlags::command;
  };
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_EQ(pasteboard.items, std::vector{item({{"text", "mine"}})});
}

TEST_F(SelectionTest, HeldOptionDelaysTheCopyUntilItIsReleased) {
  int looks = 0;
  keyboard.flags = [&] { return ++looks < 4 ? EventFlags::option : 0; };
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_EQ(looks, 4);
}

TEST_F(SelectionTest, ModifierHeldForGoodDelaysTheCopyForHalfASecondOnly) {
  for (const auto flag :
       {EventFlags::shift, EventFlags::control, EventFlags::option, EventFlags::command}) {
    keyboard.flags = [flag] { return flag; };
    copies(QStringLiteral("copied"));
    const auto start = Clock::now();
    EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
    EXPECT_GE(Clock::now() - start, 500ms);
    EXPECT_LT(Clock::now() - start, 2s);
  }
}

TEST_F(SelectionTest, HeldCapsLockDoesNotDelayTheCopy) {
  int looks = 0;
  keyboard.flags = [&] {
    ++looks;
    return std::uint64_t{0x10000 | 0x800000};  // Caps Lock and the function key.
  };
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_EQ(looks, 1);
}

TEST_F(SelectionTest, KeyEventThatCannotBeMadeIsSkippedAndTheOtherPosted) {
  keyboard.makesKeyDown = false;
  copies(QStringLiteral("copied"));
  EXPECT_EQ(selection.viaCopy(), QStringLiteral("copied"));
  EXPECT_EQ(journal.starting("main: key").size(), 1U);
  keyboard.makesKeyUp = false;
  EXPECT_EQ(selection.viaCopy(), std::nullopt);
  EXPECT_EQ(journal.starting("main: key").size(), 1U);
}

}  // namespace
}  // namespace tavin::test
