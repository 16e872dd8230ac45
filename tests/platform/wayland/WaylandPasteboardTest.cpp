#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <thread>

#include "platform/wayland/ClipboardOwner.h"
#include "platform/wayland/WaylandPasteboard.h"

namespace tavin::wayland {
namespace {

using test::ClipboardOwner;
using test::Types;
using testing::AllOf;
using testing::Gt;
using testing::Lt;

const std::string kText = "text/plain;charset=utf-8";

// Bytes that look like no text and do not repeat.
QByteArray picture(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

// Text in several encodings, files, private types with odd names, an empty one and a picture.
Types oddTypes(qsizetype pictureSize) {
  return {
      {"x-special/gnome-copied-files", "copy\nfile:///tmp/a%20b.txt"},
      {"text/uri-list", "file:///tmp/a%20b.txt\r\n"},
      {"image/png", picture(pictureSize)},
      {"application/x-foo;x=\"1\"", QByteArray("\x00\x01\x02 binary \xff", 13)},
      {"text/html", "<b>h\xc3\xa4</b>"},
      {"UTF8_STRING", "plain äöü 😀"},
      {kText, "plain äöü 😀"},
      {"text/plain", "plain ???"},
      {"STRING", "plain \xe4\xf6\xfc ?"},
      {"application/x-empty", ""},
      {"Rich Text Format", "{\\rtf1 hi}"},
  };
}

// What another program gets, with a tool that has nothing to do with our code.
std::optional<QByteArray> pasted(const QStringList& options) {
  QProcess tool;
  tool.start("wl-paste", QStringList{"--no-newline"} + options);
  return tool.waitForFinished(10'000) && tool.exitCode() == 0
             ? std::optional(tool.readAllStandardOutput())
             : std::nullopt;
}

class WaylandPasteboardTest : public testing::Test {
 protected:
  Types read() {
    const auto items = pasteboard_.pasteboardItems();
    if (!items || items->size() != 1)
      return {{"(no item)", {}}};
    Types types;
    for (const auto& [name, bytes] : items->front().types)
      types.emplace_back(name.toStdString(), bytes);
    return types;
  }
  void copyBySomeoneElse() {
    const ClipboardOwner other(Types{{kText, "something else"}});
    EXPECT_EQ(pasteboard_.string(), "something else");
  }
  void expectServed(const Types& types) {
    QByteArray names;
    for (const auto& [name, bytes] : types) {
      names += QByteArray::fromStdString(name) + '\n';
      EXPECT_TRUE(pasted({"--type", QString::fromStdString(name)}) == bytes) << name;
    }
    EXPECT_EQ(pasted({"--list-types"}), names);
  }

  std::shared_ptr<Compositor> compositor_ = Compositor::connect();
  WaylandPasteboard pasteboard_{compositor_};
};

TEST_F(WaylandPasteboardTest, GivesBackEveryTypeInOrderByteForByte) {
  for (const qsizetype size : {3'000, 3'000'000, 30'000'000}) {
    const Types types = oddTypes(size);
    std::optional<std::vector<PasteboardItem>> saved;
    {
      const ClipboardOwner owner(types);
      EXPECT_TRUE(read() == types);
      saved = pasteboard_.pasteboardItems();
    }
    ASSERT_TRUE(saved);
    copyBySomeoneElse();
    pasteboard_.clearContents();
    pasteboard_.writeObjects(*saved);
    expectServed(types);
    EXPECT_TRUE(read() == types) << "what we serve can be saved again";
  }
}

TEST_F(WaylandPasteboardTest, AnEmptyClipboardHasNoItemsAndIsEmptyAgainAfterwards) {
  copyBySomeoneElse();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::vector<PasteboardItem>{});
  const ClipboardOwner other(Types{{kText, "something else"}});
  pasteboard_.clearContents();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::vector<PasteboardItem>{});
  EXPECT_EQ(pasteboard_.string(), std::nullopt);
  EXPECT_EQ(pasted({}), std::nullopt);
}

TEST_F(WaylandPasteboardTest, AClearedClipboardIsClearedByItself) {
  const ClipboardOwner other(Types{{kText, "something else"}});
  pasteboard_.clearContents();
  const Deadline deadline = Deadline::in(5);
  while (!other.isCancelled() && !deadline.passed()) std::this_thread::yield();
  EXPECT_TRUE(other.isCancelled());
  EXPECT_EQ(pasted({}), std::nullopt);
}

TEST_F(WaylandPasteboardTest, AClearedClipboardIsClearedAtOnceAtTheEnd) {
  const ClipboardOwner other(Types{{kText, "something else"}});
  pasteboard_.clearContents();
  compositor_->clipboard()->clearNow(Deadline::in(5));
  EXPECT_EQ(WaylandPasteboard(Compositor::connect()).string(), std::nullopt);
}

TEST_F(WaylandPasteboardTest, APictureAloneComesBackAndHasNoText) {
  const Types alone{{"image/png", picture(5000)}};
  const ClipboardOwner owner(alone);
  EXPECT_EQ(pasteboard_.string(), std::nullopt);
  EXPECT_TRUE(read() == alone);
}

TEST_F(WaylandPasteboardTest, QuestionsToTheOwnerAreNoTypes) {
  const ClipboardOwner owner({{"TARGETS", "?"}, {"SAVE_TARGETS", "?"}, {kText, "a"}});
  EXPECT_EQ(read(), (Types{{kText, "a"}}));
}

TEST_F(WaylandPasteboardTest, ASilentOwnerIsUnknownWithinTheTimeLimit) {
  const ClipboardOwner owner({{kText, "a"}}, {.silentOn = {kText}});
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  EXPECT_THAT(timer.elapsed(), AllOf(Gt(900), Lt(2000)));
  timer.start();
  EXPECT_EQ(pasteboard_.string(), std::nullopt);
  EXPECT_THAT(timer.elapsed(), AllOf(Gt(900), Lt(2000)));
}

TEST_F(WaylandPasteboardTest, AnOwnerThatHoldsBackItsPngIsUnknown) {
  const ClipboardOwner owner({{"x-data", "b"}, {"image/png", "a"}}, {.silentOn = {"image/png"}});
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(WaylandPasteboardTest, APrivateTypeThatDoesNotComeIsLeftOut) {
  const ClipboardOwner owner({{"x-slow", "b"}, {"image/png", "p"}, {kText, "a"}},
                             {.silentOn = {"x-slow"}});
  EXPECT_EQ(read(), (Types{{"image/png", "p"}, {kText, "a"}}));
}

TEST_F(WaylandPasteboardTest, AnOwnerThatHoldsBackItsFilesIsUnknown) {
  const ClipboardOwner owner({{"text/uri-list", "file:///a\r\n"}, {kText, "a"}},
                             {.silentOn = {"text/uri-list"}});
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(WaylandPasteboardTest, AnOwnerThatIsLateWithAllThatItOffersIsUnknown) {
  const ClipboardOwner owner({{"x-one", "1"}, {"image/bmp", "3"}},
                             {.silentOn = {"x-one", "image/bmp"}});
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(WaylandPasteboardTest, APrivateTypeThatComesByHalfIsUnknown) {
  const ClipboardOwner owner({{"x-half", "both halves"}, {"text/plain", "a"}},
                             {.stopsIn = {"x-half"}});
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(WaylandPasteboardTest, PicturesThatDoNotComeInTimeAreLeftOut) {
  const ClipboardOwner owner({{"image/a", "a"},
                              {"image/b", "b"},
                              {"image/c", "c"},
                              {"image/d", "d"},
                              {"image/e", "e"},
                              {kText, "t"}},
                             {.silentOn = {"image/a", "image/b", "image/c", "image/d"}});
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(read(), (Types{{kText, "t"}}));
  EXPECT_LT(timer.elapsed(), 2000);
}

TEST_F(WaylandPasteboardTest, TextsAreAskedForBeforePictures) {
  ClipboardOwner owner({{"image/bmp", "b"}, {"image/png", "p"}, {"x-data", "d"}, {"STRING", "s"}});
  read();
  owner.end();
  EXPECT_EQ(owner.requests(),
            (std::vector<std::string>{"STRING", "x-data", "image/png", "image/bmp"}));
}

TEST_F(WaylandPasteboardTest, AnOwnerThatChangesWhileItIsReadIsReadAgain) {
  const Types fresh{{kText, "new"}, {"x-more", "more"}};
  for (const std::string& moment : {kText, std::string("x-last")}) {
    const ClipboardOwner owner({{kText, "old"}, {"x-last", "last"}},
                               {.changesOn = moment, .changesTo = fresh});
    EXPECT_EQ(read(), fresh) << moment;
  }
}

TEST_F(WaylandPasteboardTest, TheCountTakenAfterReadingKnowsOfChangesWhileReading) {
  const ClipboardOwner owner({{kText, "old"}}, {.changesOn = kText, .changesTo = {{kText, "new"}}});
  read();
  const auto count = pasteboard_.changeCount();
  EXPECT_EQ(pasteboard_.changeCount(), count);
}

TEST_F(WaylandPasteboardTest, AnOwnerThatDiesWhileItIsReadIsUnknownAtOnce) {
  for (const std::string& moment : {kText, std::string("x-last")}) {
    const ClipboardOwner owner({{kText, "old"}, {"x-last", "last"}}, {.diesOn = moment});
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt) << moment;
    EXPECT_LT(timer.elapsed(), 900) << moment << ": the time limit is a second";
  }
}

TEST_F(WaylandPasteboardTest, TheCountGrowsWithEveryChange) {
  const auto start = pasteboard_.changeCount();
  {
    const ClipboardOwner owner(Types{{kText, "a"}});
    EXPECT_EQ(pasteboard_.changeCount(), start + 1);
    EXPECT_EQ(pasteboard_.changeCount(), start + 1);
    const ClipboardOwner next(Types{{kText, "b"}});
    EXPECT_EQ(pasteboard_.changeCount(), start + 2);
  }
  const auto gone = pasteboard_.changeCount();
  EXPECT_EQ(gone, start + 3);
  pasteboard_.clearContents();
  pasteboard_.writeObjects({{{{QString::fromStdString(kText), "c"}}}});
  EXPECT_GT(pasteboard_.changeCount(), gone);
}

TEST_F(WaylandPasteboardTest, AWatchTellsEachChangeOnceAndNoneOfOurOwn) {
  pasteboard_.beginWatch([] {});
  for (int i = 0; i < 2; ++i) {
    const ClipboardOwner owner(Types{{kText, "copied"}});
    EXPECT_EQ(pasteboard_.takeChanges().size(), 1U);
    pasteboard_.writeObjects({{{{QString::fromStdString(kText), "given back"}}}});
    EXPECT_TRUE(pasteboard_.takeChanges().empty());
    EXPECT_EQ(read(), (Types{{kText, "given back"}}));
  }
  pasteboard_.clearContents();
  pasteboard_.changeCount();
  EXPECT_TRUE(pasteboard_.takeChanges().empty());
  const ClipboardOwner owner(Types{{kText, "copied"}});
  EXPECT_EQ(pasteboard_.takeChanges().size(), 1U);
  pasteboard_.endWatch();
}

TEST_F(WaylandPasteboardTest, ReadsTextInEveryPlainForm) {
  const std::pair<Types, QString> cases[] = {
      {{{"STRING", "no"}, {kText, "  äöü 😀\n"}}, "  äöü 😀\n"},
      {{{"STRING", "no"}, {"UTF8_STRING", "ä"}}, "ä"},
      {{{"STRING", "\xe4\xf6"}, {"text/html", "no"}}, "äö"},
      {{{"text/plain", "only"}}, "only"},
      {{{"TEXT", "ä"}}, "ä"},
  };
  for (const auto& [types, expected] : cases) {
    const ClipboardOwner owner(types);
    EXPECT_EQ(pasteboard_.string(), expected);
  }
}

TEST_F(WaylandPasteboardTest, OfSeveralItemsEachTypeIsServedOnce) {
  pasteboard_.writeObjects({{{{"x-a", "1"}, {"x-b", "2"}}}, {{{"x-b", "3"}, {"x-c", "4"}}}});
  expectServed({{"x-a", "1"}, {"x-b", "2"}, {"x-c", "4"}});
}

TEST_F(WaylandPasteboardTest, AReaderThatTakesNothingKeepsNobodyWaiting) {
  const auto compositor = Compositor::connect(/*transferIdleSeconds=*/0.2);
  WaylandPasteboard ours(compositor);
  const QByteArray large = picture(5'000'000);
  ours.writeObjects({{{{"x-large", large}}}});
  const auto listing = compositor_->reader()->list(SelectionKind::clipboard, Deadline::in(5));
  ASSERT_TRUE(listing);
  // A program that asks, reads a little and then nothing for a while.
  QProcess lazy;
  lazy.start("sh", {"-c", "wl-paste --type x-large | { head -c 10; sleep 600; }"});
  ASSERT_TRUE(lazy.waitForReadyRead(10'000));
  EXPECT_TRUE(pasted({"--type", "x-large"}) == large);
  lazy.kill();
  lazy.waitForFinished(10'000);
}

TEST_F(WaylandPasteboardTest, IsServedAsLongAsItLives) {
  {
    WaylandPasteboard ours(Compositor::connect());
    ours.writeObjects({{{{"x-a", "1"}}}});
    expectServed({{"x-a", "1"}});
  }
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::vector<PasteboardItem>{});
}

}  // namespace
}  // namespace tavin::wayland
