#include <gtest/gtest.h>

#include <utility>

#include "platform/session/NotingControl.h"

namespace tavin::test {
namespace {

class Control final : public RemoteControl {
 public:
  explicit Control(RemoteActions& served) : served_(served) {}
  void serve(RemoteActions actions) override { served_ = std::move(actions); }

 private:
  RemoteActions& served_;
};

TEST(NotingControlTest, OfWhatOtherProgramsMayRunSpeakAloneCountsAsAShortcut) {
  RemoteActions served;
  int arrived = 0, ran = 0;
  session::NotingControl control(std::make_unique<Control>(served), [&] { ++arrived; });
  const auto run = [&] { ++ran; };
  control.serve({run, run, run, run, run, run, run, run, run, run, run});
  for (const auto& action :
       {served.activate, served.togglePause, served.stop, served.nextSentence,
        served.previousSentence, served.nextParagraph, served.previousParagraph,
        served.repeatSentence, served.faster, served.slower})
    action();
  EXPECT_EQ(ran, 10);
  EXPECT_EQ(arrived, 0);
  served.speakOrStop();
  EXPECT_EQ(ran, 11);
  EXPECT_EQ(arrived, 1);
}

}  // namespace
}  // namespace tavin::test
