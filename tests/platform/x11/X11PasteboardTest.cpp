#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <optional>
#include <thread>

#include "platform/x11/X11PasteboardFixture.h"

namespace tavin::x11 {
namespace {

using test::ClipboardOwner;
using test::Targets;
using testing::AllOf;
using testing::Gt;
using testing::Lt;

// Text in several encodings, files, private types with odd names, an empty one and a picture.
Targets oddTargets(qsizetype pictureSize) {
  return {
      {"x-special/gnome-copied-files", "copy\nfile:///tmp/a%20b.txt"},
      {"text/uri-list", "file:///tmp/a%20b.txt\r\n"},
      {"image/png", test::picture(pictureSize)},
      {"application/x-foo;x=\"1\"", QByteArray("\x00\x01\x02 binary \xff", 13)},
      {"text/html", "<b>h\xc3\xa4</b>"},
      {"UTF8_STRING", "plain äöü 😀"},
      {"text/plain;charset=utf-8", "plain äöü 😀"},
      {"text/plain", "plain ???"},
      {"STRING", "plain \xe4\xf6\xfc ?"},
      {"TEXT", "plain \xe4\xf6\xfc ?"},
      {"application/x-empty", ""},
      {"Rich Text Format", "{\\rtf1 hi}"},
      {"text/rtf", "{\\rtf1 hi}"},
  };
}

Targets pictureAlone() { return {{"image/png", test::picture(5000)}}; }

TEST_F(X11PasteboardTest, GivesBackEveryTargetInOrderByteForByte) {
  for (const qsizetype size : {3'000, 3'000'000, 30'000'000}) {
    const Targets targets = oddTargets(size);
    std::optional<std::vector<PasteboardItem>> saved;
    {
      const ClipboardOwner owner(targets);
      EXPECT_TRUE(read() == targets);
      saved = pasteboard_->pasteboardItems();
    }
    ASSERT_TRUE(saved);
    copyBySomeoneElse();
    pasteboard_->clearContents();
    pasteboard_->writeObjects(*saved);
    expectServed(targets);
    EXPECT_TRUE(read() == targets) << "what we serve can be saved again";
  }
}

TEST_F(X11PasteboardTest, WhatWasReadEarlierIsGivenBackAsItWasDelivered) {
  const xcb_atom_t clipboard = connection_->atom("CLIPBOARD");
  const xcb_atom_t target = connection_->atom("x-span");
  const auto owner = ClipboardServer::create();
  owner->serve({{target, XCB_ATOM_INTEGER, 32, QByteArray(8, 'n')}});
  const auto saved = pasteboard_->pasteboardItems();
  ASSERT_TRUE(saved);
  owner->serve({{target, target, 8, QByteArray(8, 'm')}});
  ASSERT_NE(pasteboard_->pasteboardItems(), saved);
  pasteboard_->writeObjects(*saved);
  const auto given = SelectionReader::create()->convert(clipboard, target, Deadline::in(5));
  EXPECT_EQ(given.type, xcb_atom_t{XCB_ATOM_INTEGER});
  EXPECT_EQ(given.format, 32);
  EXPECT_EQ(given.bytes, QByteArray(8, 'n'));
}

TEST_F(X11PasteboardTest, AnEmptyClipboardHasNoItemsAndIsEmptyAgainAfterwards) {
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::vector<PasteboardItem>{});
  const ClipboardOwner other(Targets{{"UTF8_STRING", "something else"}});
  pasteboard_->clearContents();
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::vector<PasteboardItem>{});
  EXPECT_EQ(pasteboard_->string(), std::nullopt);
}

TEST_F(X11PasteboardTest, AClearedClipboardIsGivenUpByItself) {
  const ClipboardOwner other(Targets{{"UTF8_STRING", "something else"}});
  pasteboard_->clearContents();
  const auto reader = SelectionReader::create();
  const Deadline deadline = Deadline::in(5);
  const xcb_atom_t clipboard = reader->connection().atom("CLIPBOARD");
  while (reader->owner(clipboard) != XCB_WINDOW_NONE && !deadline.passed())
    std::this_thread::yield();
  EXPECT_EQ(reader->owner(clipboard), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(X11PasteboardTest, APictureAloneComesBackAndHasNoText) {
  const ClipboardOwner owner(pictureAlone());
  EXPECT_EQ(pasteboard_->string(), std::nullopt);
  EXPECT_TRUE(read() == pictureAlone());
}

TEST_F(X11PasteboardTest, ARefusedTargetIsLeftOut) {
  const ClipboardOwner owner({{"UTF8_STRING", "a"}, {"text/html", "b"}, {"x-third", "c"}},
                             {.refuses = {"text/html"}});
  EXPECT_EQ(read(), (Targets{{"UTF8_STRING", "a"}, {"x-third", "c"}}));
}

TEST_F(X11PasteboardTest, ATypeWhoseDataCouldNotBeReadBeforehandIsGoneAfterwards) {
  ClipboardOwner owner({{"UTF8_STRING", "a"}, {"text/html", "b"}, {"x-third", "c"}},
                       {.refuses = {"text/html"}});
  const auto saved = pasteboard_->pasteboardItems();
  ASSERT_TRUE(saved);
  copyBySomeoneElse();
  pasteboard_->clearContents();
  pasteboard_->writeObjects(*saved);
  EXPECT_EQ(test::pasted("UTF8_STRING"), "a");
  EXPECT_EQ(test::pasted("x-third"), "c");
  EXPECT_EQ(test::pasted("text/html"), "(no such target)");
}

TEST_F(X11PasteboardTest, AnOwnerThatListsNothingIsReadByItsText) {
  const ClipboardOwner owner({{"STRING", "old"}}, {.refuses = {"TARGETS"}});
  EXPECT_EQ(read(), (Targets{{"STRING", "old"}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatAnswersItsTextToEverythingIsReadByItsText) {
  const ClipboardOwner owner({{"UTF8_STRING", "old"}}, {.knowsOnlyText = true});
  EXPECT_EQ(read(), (Targets{{"UTF8_STRING", "old"}, {"STRING", "old"}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatListsTargetsWithoutEndIsUnknownInTime) {
  const ClipboardOwner owner({{"UTF8_STRING", "a"}}, {.listsMore = 500'000});
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
  EXPECT_LT(timer.elapsed(), 2000);
}

TEST_F(X11PasteboardTest, ASilentOwnerIsUnknownWithinTheTimeLimit) {
  const ClipboardOwner owner({{"UTF8_STRING", "a"}}, {.silentOn = {"TARGETS"}});
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
  EXPECT_THAT(timer.elapsed(), AllOf(Gt(900), Lt(2000)));
}

TEST_F(X11PasteboardTest, AnOwnerThatHoldsBackItsTextIsUnknown) {
  const ClipboardOwner owner({{"x-data", "b"}, {"UTF8_STRING", "a"}},
                             {.silentOn = {"UTF8_STRING"}});
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
}

TEST_F(X11PasteboardTest, APrivateTypeThatDoesNotComeIsLeftOut) {
  const ClipboardOwner owner({{"x-slow", "b"}, {"image/png", "p"}, {"UTF8_STRING", "a"}},
                             {.silentOn = {"x-slow"}});
  EXPECT_EQ(read(), (Targets{{"image/png", "p"}, {"UTF8_STRING", "a"}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatHoldsBackItsFilesIsUnknown) {
  const ClipboardOwner owner({{"text/uri-list", "file:///a\r\n"}, {"UTF8_STRING", "a"}},
                             {.silentOn = {"text/uri-list"}});
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
}

TEST_F(X11PasteboardTest, AnOwnerThatIsLateWithAllThatItOffersIsUnknown) {
  const ClipboardOwner owner({{"x-one", "1"}, {"x-refused", "2"}, {"image/bmp", "3"}},
                             {.silentOn = {"x-one", "image/bmp"}, .refuses = {"x-refused"}});
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
}

TEST_F(X11PasteboardTest, PiecesOfTheTypeThatAnnouncesPiecesAreARefusal) {
  const ClipboardOwner owner({{"UTF8_STRING", "a"}, {"x-large", test::picture(150'000)}},
                             {.pieceType = "INCR"});
  EXPECT_EQ(read(), (Targets{{"UTF8_STRING", "a"}}));
}

TEST_F(X11PasteboardTest, APrivateTypeThatComesSlowlyComesWhole) {
  const Targets large{{"x-large", test::picture(150'000)}};
  const ClipboardOwner owner(large, {.pieceTakes = std::chrono::milliseconds(180)});
  EXPECT_EQ(read(), large);
}

TEST_F(X11PasteboardTest, TextsAreAskedForBeforePictures) {
  ClipboardOwner owner({{"image/bmp", "b"}, {"image/png", "p"}, {"x-data", "d"}, {"STRING", "s"}});
  read();
  owner.end();
  EXPECT_EQ(owner.requests(),
            (std::vector<std::string>{"TARGETS", "STRING", "x-data", "image/png", "image/bmp"}));
}

TEST_F(X11PasteboardTest, AnOwnerThatChangesWhileItIsReadIsReadAgain) {
  const Targets fresh{{"UTF8_STRING", "new"}, {"x-more", "more"}};
  for (const std::string moment : {"TARGETS", "UTF8_STRING", "x-last"}) {
    const ClipboardOwner owner({{"UTF8_STRING", "old"}, {"x-last", "last"}},
                               {.changesOn = moment, .changesTo = fresh});
    EXPECT_EQ(read(), fresh) << moment;
  }
}

TEST_F(X11PasteboardTest, TheCountTakenAfterReadingKnowsOfChangesWhileReading) {
  const ClipboardOwner owner({{"UTF8_STRING", "old"}},
                             {.changesOn = "UTF8_STRING", .changesTo = {{"UTF8_STRING", "new"}}});
  read();
  const auto count = pasteboard_->changeCount();
  EXPECT_EQ(pasteboard_->changeCount(), count);
}

TEST_F(X11PasteboardTest, AnOwnerThatDiesWhileItIsReadIsUnknownAtOnce) {
  for (const std::string moment : {"TARGETS", "UTF8_STRING", "x-last"}) {
    const ClipboardOwner owner({{"UTF8_STRING", "old"}, {"x-last", "last"}}, {.diesOn = moment});
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt) << moment;
    EXPECT_LT(timer.elapsed(), 900) << moment << ": the time limit is a second";
  }
}

TEST_F(X11PasteboardTest, TheCountGrowsWithEveryChange) {
  const auto start = pasteboard_->changeCount();
  {
    const ClipboardOwner owner(Targets{{"UTF8_STRING", "a"}});
    EXPECT_EQ(pasteboard_->changeCount(), start + 1);
    EXPECT_EQ(pasteboard_->changeCount(), start + 1);
    const ClipboardOwner next(Targets{{"UTF8_STRING", "b"}});
    EXPECT_EQ(pasteboard_->changeCount(), start + 2);
  }
  const auto gone = pasteboard_->changeCount();
  EXPECT_EQ(gone, start + 3);
  pasteboard_->clearContents();
  pasteboard_->writeObjects({{{{"UTF8_STRING", "c"}}}});
  EXPECT_GT(pasteboard_->changeCount(), gone);
}

TEST_F(X11PasteboardTest, ReadsTextInEveryPlainForm) {
  const std::pair<Targets, QString> cases[] = {
      {{{"STRING", "no"}, {"UTF8_STRING", "  äöü 😀\n"}}, "  äöü 😀\n"},
      {{{"STRING", "no"}, {"text/plain;charset=utf-8", "ä"}}, "ä"},
      {{{"STRING", "\xe4\xf6"}, {"text/plain", "no"}}, "äö"},
      {{{"text/plain", "only"}}, "only"},
      {{{"TEXT",
         "Gr\xfc\xdf"
         "e"}},
       "Grüße"},
      {{{"COMPOUND_TEXT", "plain \xe4 \x1b%Gäöü 😀\x1b%@ \xfc"}}, "plain ä äöü 😀 ü"},
      {{{"COMPOUND_TEXT", "\x1b%Gunended"}}, "unended"},
      {{{"UTF8_STRING", ""}}, ""},
      {{{"UTF8_STRING", QByteArray(10'000'000, 'x')}}, QString(10'000'000, 'x')},
  };
  for (const auto& [targets, text] : cases) {
    const ClipboardOwner owner(targets);
    EXPECT_TRUE(pasteboard_->string() == text) << targets.front().first;
  }
}

TEST_F(X11PasteboardTest, TextInAnEncodingFromBeforeUnicodeIsNone) {
  const ClipboardOwner owner(Targets{{"COMPOUND_TEXT", "\x1b$(B\x46\x7c"}});
  EXPECT_EQ(pasteboard_->string(), std::nullopt);
}

}  // namespace
}  // namespace tavin::x11
