#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <future>
#include <thread>

#include "platform/x11/X11PasteboardFixture.h"

namespace tavin::x11 {
namespace {

using test::ClipboardOwner;
using test::OwnerManners;
using test::Targets;
using testing::AllOf;
using testing::Gt;
using testing::Lt;

class ServedClipboardTest : public X11PasteboardTest {};

TEST_F(ServedClipboardTest, AnItemWithoutTypesIsServedAsOneWithoutTypes) {
  pasteboard_->writeObjects({PasteboardItem{}});
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::vector{PasteboardItem{}});
}

// A program that asks for targets and takes the pieces of large ones only when it is told to.
class SlowRequestor {
 public:
  SlowRequestor() : window_(xcb_generate_id(connection_->get())) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_->get(), 0, window_, connection_->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  }
  // Returns when the answer is there; how often the property of that name was set until then.
  int ask(const char* target, const char* property) {
    xcb_connection_t* c = connection_->get();
    xcb_convert_selection(c, window_, connection_->atom("CLIPBOARD"), connection_->atom(target),
                          connection_->atom(property), XCB_CURRENT_TIME);
    xcb_flush(c);
    int pieces = 0;
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(c)}) {
      const int kind = event->response_type & 0x7f;
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
      if (kind == XCB_SELECTION_NOTIFY)
        break;
      pieces += kind == XCB_PROPERTY_NOTIFY && change.state == XCB_PROPERTY_NEW_VALUE &&
                change.atom == connection_->atom("LARGE");
    }
    return pieces;
  }
  void take(const char* property) {
    xcb_delete_property(connection_->get(), window_, connection_->atom(property));
    xcb_flush(connection_->get());
  }

 private:
  std::unique_ptr<Connection> connection_ = Connection::open();
  xcb_window_t window_;
};

TEST_F(ServedClipboardTest, ARequestorThatTakesNothingHoldsUpNobody) {
  const auto image = test::picture(2'000'000);
  pasteboard_->writeObjects({{{{"image/png", image}}}});
  SlowRequestor stuck;
  EXPECT_EQ(stuck.ask("image/png", "LARGE"), 1);
  EXPECT_TRUE(test::pasted("image/png") == image);
}

TEST_F(ServedClipboardTest, ATransferGoesOnForAsLongAsPiecesAreTakenAndIsDroppedThen) {
  pasteboard_.reset();
  server_ = ClipboardServer::create(0.3);
  server_->serve({{connection_->atom("image/png"), connection_->atom("image/png"), 8,
                   test::picture(2'000'000)}});
  SlowRequestor requestor;
  EXPECT_EQ(requestor.ask("image/png", "LARGE"), 1);
  requestor.take("LARGE");
  EXPECT_EQ(requestor.ask("TARGETS", "SMALL"), 1) << "the next piece";
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  requestor.take("LARGE");
  EXPECT_EQ(requestor.ask("TARGETS", "SMALL"), 0) << "forgotten";
}

TEST_F(ServedClipboardTest, ARequestorThatDiesMeanwhileHarmsNothing) {
  const auto image = test::picture(2'000'000);
  pasteboard_->writeObjects({{{{"image/png", image}}}});
  for (int i = 0; i < 20; ++i) {
    const auto other = Connection::open();
    const xcb_window_t window = xcb_generate_id(other->get());
    xcb_create_window(other->get(), 0, window, other->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_convert_selection(other->get(), window, other->atom("CLIPBOARD"), other->atom("image/png"),
                          other->atom("DATA"), XCB_CURRENT_TIME);
    xcb_flush(other->get());
  }
  EXPECT_TRUE(test::pasted("image/png") == image);
}

TEST_F(ServedClipboardTest, WhatIsServedStaysUntilAnotherProgramTakesOver) {
  pasteboard_->writeObjects({{{{"UTF8_STRING", "ours"}}}});
  EXPECT_EQ(test::pasted("UTF8_STRING"), "ours");
  copyBySomeoneElse();
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::vector<PasteboardItem>{}) << "and is gone then";
}

// Plays the clipboard manager: asked to save, it reads what the clipboard holds and owns it.
class ManagerPlayer {
 public:
  explicit ManagerPlayer(bool answers) : owner_(targets(), manners(answers)) {}

 private:
  static Targets targets() { return {{"SAVE_TARGETS", ""}}; }
  static OwnerManners manners(bool answers) {
    OwnerManners result;
    result.selection = "CLIPBOARD_MANAGER";
    if (!answers)
      result.silentOn = {"SAVE_TARGETS"};
    return result;
  }
  ClipboardOwner owner_;
};

TEST_F(ServedClipboardTest, HandsWhatItServesToTheClipboardManager) {
  EXPECT_TRUE(server_->handOver(Deadline::in(0.2), Deadline::in(0.5))) << "nothing to keep";
  pasteboard_->writeObjects({{{{"UTF8_STRING", "ours"}}}});
  EXPECT_FALSE(server_->handOver(Deadline::in(0.2), Deadline::in(0.5))) << "no manager";
  {
    const ManagerPlayer manager(true);
    EXPECT_TRUE(server_->handOver(Deadline::in(0.2), Deadline::in(0.5)));
    pasteboard_->writeObjects({{{{"UTF8_STRING", "ours again"}}}});
    EXPECT_EQ(test::pasted("UTF8_STRING"), "ours again");
    EXPECT_TRUE(server_->handOver(Deadline::in(0.2), Deadline::in(0.5)));
  }
  const ManagerPlayer manager(false);
  QElapsedTimer timer;
  timer.start();
  EXPECT_FALSE(server_->handOver(Deadline::in(0.2), Deadline::in(0.5)));
  EXPECT_THAT(timer.elapsed(), AllOf(Gt(400), Lt(2000)));
}

// Plays a clipboard manager that never answers and keeps what it reads by itself.
class SilentManager {
 public:
  SilentManager() {
    notice_ = connection().prepareSelectionNotices().value();
    window_ = connection().createHiddenWindow();
    xcb_set_selection_owner(connection().get(), window_, connection().atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    connection().tellOwners(connection().atom("CLIPBOARD"), window_);
    connection().roundTrip();
  }
  // What is in the clipboard when its owner is told the next time.
  QByteArray readWhenTold() {
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection().get())}) {
      if ((event->response_type & 0x7f) == notice_)
        break;
    }
    return reader_
        ->convert(connection().atom("CLIPBOARD"), connection().atom("UTF8_STRING"), Deadline::in(5))
        .bytes;
  }

 private:
  const Connection& connection() const { return reader_->connection(); }

  std::unique_ptr<SelectionReader> reader_ = SelectionReader::create();
  std::uint8_t notice_ = 0;
  xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(ServedClipboardTest, AManagerThatNeverAnswersIsToldAnewAndWaitedForUntilItHasRead) {
  pasteboard_->writeObjects({{{{"UTF8_STRING", "ours"}}}});
  SilentManager manager;
  auto read = std::async(std::launch::async, [&manager] { return manager.readWhenTold(); });
  QElapsedTimer timer;
  timer.start();
  EXPECT_FALSE(server_->handOver(Deadline::in(0.1), Deadline::in(10)));
  EXPECT_THAT(timer.elapsed(), AllOf(Gt(100), Lt(9000)));
  ASSERT_EQ(read.wait_for(std::chrono::seconds(0)), std::future_status::ready) << "before the end";
  EXPECT_EQ(read.get(), "ours");
}

TEST_F(ServedClipboardTest, WhatAnotherProgramCopiesWhileTheManagerIsWaitedForStays) {
  pasteboard_->writeObjects({{{{"UTF8_STRING", "ours"}}}});
  const SilentManager manager;
  auto kept = std::async(std::launch::async,
                         [this] { return server_->handOver(Deadline::in(0.2), Deadline::in(10)); });
  const ClipboardOwner other(Targets{{"UTF8_STRING", "another's"}});
  QElapsedTimer timer;
  timer.start();
  kept.wait();
  EXPECT_LT(timer.elapsed(), 9000) << "there is nothing to keep any more";
  EXPECT_EQ(test::pasted("UTF8_STRING"), "another's");
}

// A display that does nothing for any of the other programs while this object lives.
class GrabbedDisplay {
 public:
  GrabbedDisplay() {
    xcb_grab_server(connection_->get());
    connection_->atom("a round trip");
  }

 private:
  std::unique_ptr<Connection> connection_ = Connection::open();
};

TEST_F(ServedClipboardTest, ADisplayThatHangsIsGivenUpInTimeAndLooksUnchanged) {
  pasteboard_->writeObjects({{{{"UTF8_STRING", "ours"}}}});
  const auto count = pasteboard_->changeCount();
  {
    const ManagerPlayer manager(true);
    const GrabbedDisplay grabbed;
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(server_->handOver(Deadline::in(0.2), Deadline::in(0.5)));
    EXPECT_THAT(timer.elapsed(), AllOf(Gt(150), Lt(2000)));
    timer.restart();
    EXPECT_EQ(pasteboard_->changeCount(), count);
    EXPECT_THAT(timer.elapsed(), AllOf(Gt(900), Lt(2000)));
  }
  EXPECT_EQ(test::pasted("UTF8_STRING"), "ours");
  EXPECT_EQ(pasteboard_->changeCount(), count);
}

}  // namespace
}  // namespace tavin::x11
