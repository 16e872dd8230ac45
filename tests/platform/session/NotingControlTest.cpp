#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/session/NotingControl.h"

namespace tavin::test {
namespace {

class Bus final : public RemoteControl {
 public:
  explicit Bus(RemoteActions& served) : served_(served) {}
  void serve(RemoteActions actions) override { served_ = std::move(actions); }

 private:
  RemoteActions& served_;
};

class NotingControlTest : public testing::Test {
 protected:
  void serve(RemoteActions actions) { control_.serve(std::move(actions)); }
  std::function<void()> note(const char* what) {
    return [this, what] { notes_.emplace_back(what); };
  }

  RemoteActions served_;
  std::vector<std::string> notes_;
  session::NotingControl control_{std::make_unique<Bus>(served_), note("arrived"), note("pressed")};
};

TEST_F(NotingControlTest, EachActionCountsAsAShortcutsArrivalBeforeItRuns) {
  const auto act = note("acts");
  serve({act, act, act, act, act, act, act, act, act, act, act});
  for (const auto& action :
       {served_.activate, served_.togglePause, served_.stop, served_.nextSentence,
        served_.previousSentence, served_.nextParagraph, served_.previousParagraph,
        served_.repeatSentence, served_.faster, served_.slower}) {
    notes_.clear();
    action();
    EXPECT_EQ(notes_, (std::vector<std::string>{"arrived", "acts"}));
  }
}

TEST_F(NotingControlTest, OnlySpeakIsAPressThatLooksForASelection) {
  serve({.speakOrStop = note("speaks")});
  served_.speakOrStop();
  EXPECT_EQ(notes_, (std::vector<std::string>{"arrived", "pressed", "speaks"}));
}

}  // namespace
}  // namespace tavin::test
