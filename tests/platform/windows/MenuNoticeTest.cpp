#include <gtest/gtest.h>

#include "platform/windows/MenuNotice.h"

namespace tavin::windows {
namespace {

using namespace std::chrono_literals;

const windows::MenuNotice::Clock::time_point chosen(1h);

TEST(MenuNoticeTest, NothingIsNotedAtFirst) {
  windows::MenuNotice notice;
  EXPECT_FALSE(notice.take());
  EXPECT_FALSE(notice.take(windows::MenuNotice::Clock::time_point(1ms)));
}

TEST(MenuNoticeTest, ANoteIsTakenOnce) {
  windows::MenuNotice notice;
  notice.note(chosen);
  EXPECT_TRUE(notice.take(chosen));
  EXPECT_FALSE(notice.take(chosen));
}

TEST(MenuNoticeTest, ANoteIsForgottenAfterTwoSeconds) {
  windows::MenuNotice notice;
  notice.note(chosen);
  EXPECT_TRUE(notice.take(chosen + 1999ms));
  notice.note(chosen);
  EXPECT_FALSE(notice.take(chosen + 2s));
  EXPECT_FALSE(notice.take(chosen)) << "an old note is gone for good";
}

TEST(MenuNoticeTest, TheLastNoteCounts) {
  windows::MenuNotice notice;
  notice.note(chosen);
  notice.note(chosen + 3s);
  EXPECT_TRUE(notice.take(chosen + 4s));
}

}  // namespace
}  // namespace tavin::windows
