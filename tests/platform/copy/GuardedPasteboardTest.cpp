#include <gtest/gtest.h>

#include "platform/copy/GuardedPasteboard.h"

namespace tavin::test {
namespace {

constexpr std::uint16_t kC = 8;

struct Contents {
  std::int64_t changes = 7;
  int readings = 0;
};

class StillPasteboard final : public Pasteboard {
 public:
  explicit StillPasteboard(Contents& contents) : contents_(contents) {}
  std::optional<std::vector<PasteboardItem>> pasteboardItems() override {
    ++contents_.readings;
    return std::vector<PasteboardItem>{};
  }
  std::int64_t changeCount() override { return contents_.changes; }
  std::optional<QString> string() override { return std::nullopt; }
  void clearContents() override {}
  void writeObjects(const std::vector<PasteboardItem>&) override {}

 private:
  Contents& contents_;
};

class SwitchedKeyboard final : public copy::CopyKeyboard {
 public:
  explicit SwitchedKeyboard(const bool& ready) : CopyKeyboard([&ready] { return ready; }) {}
  std::uint64_t flagsState() override { return 0; }

 private:
  void typeChord() override {}
};

class GuardedPasteboardTest : public testing::Test {
 protected:
  void typeCopy() {
    const auto event = keyboard_.createKeyboardEvent(kC, true);
    ASSERT_TRUE(event);
    event->setFlags(EventFlags::command);
    event->post();
  }

  bool ready_ = true;
  Contents contents_;
  SwitchedKeyboard keyboard_{ready_};
  copy::GuardedPasteboard pasteboard_{std::make_unique<StillPasteboard>(contents_), keyboard_};
};

TEST_F(GuardedPasteboardTest, WhereNoCopyCanBeMadeTheContentsAreNotRead) {
  ready_ = false;
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  EXPECT_EQ(contents_.readings, 0);
}

TEST_F(GuardedPasteboardTest, WhatTheUserCopiesIsNoChangeUnlessTheCommandIsTyped) {
  pasteboard_.pasteboardItems();
  const auto before = pasteboard_.changeCount();
  ++contents_.changes;
  EXPECT_EQ(pasteboard_.changeCount(), before);
  typeCopy();
  EXPECT_NE(pasteboard_.changeCount(), before);
}

TEST_F(GuardedPasteboardTest, AClosedKeyboardTypesNothingThatWasBegun) {
  const auto event = keyboard_.createKeyboardEvent(kC, true);
  ASSERT_TRUE(event);
  event->setFlags(EventFlags::command);
  keyboard_.close();
  event->post();
  EXPECT_EQ(keyboard_.chordsTyped(), 0);
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
}

TEST_F(GuardedPasteboardTest, EachReadingBeginsANewCount) {
  pasteboard_.pasteboardItems();
  const auto before = pasteboard_.changeCount();
  typeCopy();
  ++contents_.changes;
  EXPECT_EQ(pasteboard_.changeCount(), before + 1);
  pasteboard_.pasteboardItems();
  EXPECT_EQ(pasteboard_.changeCount(), before + 1);
  ++contents_.changes;
  EXPECT_EQ(pasteboard_.changeCount(), before + 1) << "the command was not typed again";
}

}  // namespace
}  // namespace tavin::test
