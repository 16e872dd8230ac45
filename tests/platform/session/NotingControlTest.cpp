#include <gtest/gtest.h>

#include <utility>

#include "fake/FakeServices.h"
#include "platform/session/NotingControl.h"

namespace tavin::test {
namespace {

TEST(NotingControlTest, OfWhatOtherProgramsMayRunSpeakAloneCountsAsAShortcut) {
  auto fake = std::make_unique<FakeRemoteControl>();
  const RemoteActions& served = fake->actions;
  int arrived = 0, ran = 0;
  session::NotingControl control(std::move(fake), [&] { ++arrived; });
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
