#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <atomic>

#include "platform/Eventually.h"
#include "platform/wayland/FakeCompositor.h"
#include "platform/wayland/VirtualKeyboard.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandWindowSystem.h"

namespace tavin::wayland {
namespace {

using test::FakeCompositor;

const QString kType = "text/plain;charset=utf-8";

std::vector<PasteboardItem> itemWith(const QByteArray& text) { return {{{{kType, text}}}}; }

class StandardProtocolTest : public testing::Test {
 protected:
  FakeCompositor fake_{"copied before"};
  std::shared_ptr<Compositor> compositor_ = Compositor::connect();
  WaylandPasteboard pasteboard_{compositor_};
};

TEST_F(StandardProtocolTest, TheClipboardIsReadAndGivenBackThroughIt) {
  EXPECT_EQ(compositor_->clipboardName(), "ext-data-control 1");
  EXPECT_EQ(pasteboard_.pasteboardItems(), itemWith("copied before"));
  EXPECT_EQ(pasteboard_.string(), "copied before");
  const auto count = pasteboard_.changeCount();
  const QByteArray large(300'000, 'x');
  pasteboard_.writeObjects(itemWith(large));
  EXPECT_EQ(pasteboard_.changeCount(), count + 1);
  EXPECT_EQ(pasteboard_.pasteboardItems(), itemWith(large));
  pasteboard_.clearContents();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::vector<PasteboardItem>{});
  EXPECT_EQ(pasteboard_.changeCount(), count + 2);
}

TEST_F(StandardProtocolTest, WhereNobodyTellsOfInputAChangeMayBeTheUsers) {
  WaylandPasteboard other{Compositor::connect()};
  std::atomic<int> told = 0;
  pasteboard_.beginWatch([&] { ++told; });
  EXPECT_TRUE(pasteboard_.takeChanges().empty());
  other.writeObjects(itemWith("copied"));
  pasteboard_.shortcutArrived(copy::UserInput::Clock::now());
  const auto changes = pasteboard_.takeChanges();
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_TRUE(changes.front().input.first());
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(pasteboard_.takeChanges().empty());
  other.writeObjects(itemWith("copied again"));
  pasteboard_.endWatch();
  EXPECT_TRUE(pasteboard_.takeChanges().empty());
}

TEST_F(StandardProtocolTest, WhatACompositorLacksIsMissingAlone) {
  EXPECT_FALSE(compositor_->tellsWindows());
  EXPECT_EQ(VirtualKeyboard::create(), nullptr);
}

TEST_F(StandardProtocolTest, WhereNoWindowsAreToldNobodyKnowsWhetherTheMenuIsGone) {
  WaylandWindowSystem windows(compositor_);
  EXPECT_TRUE(windows.frontWindow().unknown);
  EXPECT_FALSE(windows.frontWindow().afterMenu);
  windows.menuCommandChosen();
  EXPECT_TRUE(windows.frontWindow().afterMenu);
  EXPECT_FALSE(windows.frontWindow().afterMenu);
}

TEST_F(StandardProtocolTest, ACompositorThatHangsIsNotWaitedForLong) {
  const auto count = pasteboard_.changeCount();
  fake_.hang();
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(pasteboard_.changeCount(), count);
  EXPECT_LT(timer.elapsed(), 1500);
  timer.start();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  EXPECT_LT(timer.elapsed(), 3500);
  timer.start();
  EXPECT_EQ(Compositor::connect(), nullptr);
  EXPECT_LT(timer.elapsed(), 4500);
}

TEST_F(StandardProtocolTest, AfterTheCompositorsEndNothingIsKnown) {
  const auto count = pasteboard_.changeCount();
  fake_.end();
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  EXPECT_EQ(pasteboard_.string(), std::nullopt);
  EXPECT_EQ(pasteboard_.changeCount(), count);
  pasteboard_.writeObjects(itemWith("nobody can have it"));
  pasteboard_.clearContents();
  EXPECT_LT(timer.elapsed(), 1500);
  EXPECT_EQ(Compositor::connect(), nullptr);
}

TEST_F(StandardProtocolTest, ACompositorInTheOthersPlaceServesOnceItIsConnectedTo) {
  fake_.end();
  compositor_->renew();
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  FakeCompositor other("copied later");
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  EXPECT_TRUE(eventually([&] {
    compositor_->renew();
    return pasteboard_.pasteboardItems() == itemWith("copied later");
  }));
}

}  // namespace
}  // namespace tavin::wayland
