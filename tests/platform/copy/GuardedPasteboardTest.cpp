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

// Counts what it is asked.
struct Key {
  bool permitted = true;
  std::uint64_t held = 0;
  int questions = 0;
  int typed = 0;
};

class CountingKey final : public copy::CopyKey {
 public:
  explicit CountingKey(Key& key) : key_(key) {}
  std::uint64_t heldModifiers() override { return key_.held; }
  bool isPermitted() override {
    ++key_.questions;
    return key_.permitted;
  }
  void type() override { ++key_.typed; }

 private:
  Key& key_;
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
  Key key_;
  copy::CopyKeyboard keyboard_{std::make_unique<CountingKey>(key_), [this] { return ready_; }};
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
  EXPECT_EQ(keyboard_.commandsTyped(), 0);
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

TEST_F(GuardedPasteboardTest, NoPermissionIsAskedForWhereTheProgramMustNotGetTheKeys) {
  ready_ = false;
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
  EXPECT_EQ(key_.questions, 0);
  ready_ = true;
  key_.permitted = false;
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
  EXPECT_EQ(key_.questions, 1);
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(GuardedPasteboardTest, AHeldModifierMakesNoEvent) {
  key_.held = EventFlags::option;
  EXPECT_EQ(keyboard_.flagsState(), EventFlags::option);
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, false)) << "an up without a down";
}

TEST_F(GuardedPasteboardTest, WhereNothingCanTypeThereIsNoEvent) {
  copy::CopyKeyboard none(nullptr, [] { return true; });
  EXPECT_FALSE(none.canType());
  EXPECT_FALSE(none.isReady());
  EXPECT_EQ(none.flagsState(), 0U);
  EXPECT_FALSE(none.createKeyboardEvent(kC, true));
}

}  // namespace
}  // namespace tavin::test
