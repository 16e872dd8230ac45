#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "engine/EngineClient.h"
#include "fake/FakePlatform.h"
#include "platform/Bundle.h"
#include "platform/http/LoopbackSession.h"
#include "platform/posix/PosixProcessLauncher.h"

namespace tavin::test {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

// The client with its real session and launcher against the engine of the source tree, which it
// starts once for all of these tests. Needs a network and a sound server of its own.
class RealEngineTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    parts = new Parts;
    parts->client->startIfNeeded();
  }
  static void TearDownTestSuite() {
    parts->client->shutdown();
    EXPECT_TRUE(eventually([] { return !client().status(); }));
    EXPECT_THAT(parts->fakes.log.lines, IsEmpty());
    delete parts;
  }
  void SetUp() override {
    ASSERT_TRUE(eventually([] { return client().status().has_value(); }));
    ASSERT_TRUE(client().post("config", {{"engine", "espeak"}, {"speed", 1}}));
  }

  static bool eventually(const std::function<bool()>& condition) {
    for (const auto end = std::chrono::steady_clock::now() + 20s;
         std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(5ms))
      if (condition())
        return true;
    return false;
  }
  static EngineClient& client() { return *parts->client; }
  static EngineStatus status() { return client().status().value_or(EngineStatus{}); }
  static bool reaches(const QString& state) {
    return eventually([&] { return status().state == state; });
  }
  // What a request that was carried out is answered with.
  static std::optional<QJsonObject> done() { return QJsonObject{{"ok", true}}; }

 private:
  struct Parts {
    FakePlatform fakes;
    http::LoopbackSession session{fakes.log};
    posix::PosixProcessLauncher launcher;
    const Bundle bundle{.resourcesDirectory = std::nullopt,
                        .windowProgram = {},
                        .info = {{"TavinEngineDir", QStringLiteral(TAVIN_SPEECH_FOLDER)}}};
    std::shared_ptr<EngineClient> client = std::make_shared<EngineClient>(
        EngineClient::Services{session, {launcher, fakes.mainQueue, fakes.log, bundle}});
  };
  static inline Parts* parts = nullptr;
};

TEST_F(RealEngineTest, StatusDecodes) {
  const EngineStatus now = status();
  EXPECT_EQ(now.state, QStringLiteral("idle"));
  EXPECT_FALSE(now.isActive());
  EXPECT_EQ(now.chars, 0);
  EXPECT_EQ(now.engine, QStringLiteral("espeak"));
  EXPECT_FALSE(now.voice.isEmpty());
  EXPECT_EQ(now.speed, 1);
  EXPECT_TRUE(now.ready);
  EXPECT_FALSE(now.download);
  EXPECT_FALSE(now.setupError);
  EXPECT_THAT(now.engines, SizeIs(5));
  EXPECT_THAT(now.engines, Contains(EngineInfo{"espeak", "eSpeak NG", true}));
  EXPECT_THAT(now.engines, Contains(EngineInfo{"openai", "OpenAI", false}));
}

TEST_F(RealEngineTest, VoicesDecodeForEachEngine) {
  for (const EngineInfo& engine : status().engines) {
    // Kokoro's are in a file that is not there yet; ElevenLabs' are the account's, which needs a
    // key.
    const bool listed = engine.name != "kokoro" && engine.name != "elevenlabs";
    EXPECT_EQ(!client().voices(engine.name).empty(), listed) << engine.name.toStdString();
  }
  EXPECT_THAT(client().voices("espeak"), Contains(Voice{"gmw/de", "Deutsch"}));
  EXPECT_THAT(client().voices("openai"), Contains(Voice{"alloy", "Alloy"}));
}

TEST_F(RealEngineTest, NamesWithBlanksAndSignsArriveAndAreNoEngines) {
  for (const char* name : {"e speak", "espeak&engine=espeak", "é+%20", ""})
    EXPECT_THAT(client().voices(name), IsEmpty()) << name;
}

TEST_F(RealEngineTest, ChoicesAreTakenOver) {
  EXPECT_EQ(client().post("config", {{"voice", "gmw/de"}}), done());
  EXPECT_EQ(client().post("config", {{"speed", 1.25}}), done());
  EXPECT_EQ(status().voice, QStringLiteral("gmw/de"));
  EXPECT_EQ(status().speed, 1.25);
  EXPECT_EQ(client().post("config", {{"engine", "openai"}}), done());
  EXPECT_EQ(status().engine, QStringLiteral("openai"));
}

TEST_F(RealEngineTest, RefusedRequestsAreAbsentAndChangeNothing) {
  const EngineStatus before = status();
  EXPECT_FALSE(client().post("config", {{"engine", "nobody"}}));
  EXPECT_FALSE(client().post("config", {{"voice", "no body"}}));
  EXPECT_FALSE(client().post("config", {{"speed", 9}}));
  EXPECT_FALSE(client().post("key", {{"engine", "espeak"}, {"key", "a key"}}));
  EXPECT_FALSE(client().post("speak"));
  EXPECT_FALSE(client().post("nowhere"));
  EXPECT_EQ(status(), before);
}

TEST_F(RealEngineTest, KeyIsTakenAndRemoved) {
  const EngineInfo withKey{"elevenlabs", "ElevenLabs", true};
  EXPECT_EQ(client().post("key", {{"engine", "elevenlabs"}, {"key", "a key"}}), done());
  EXPECT_THAT(status().engines, Contains(withKey));
  EXPECT_EQ(client().post("key", {{"engine", "elevenlabs"}, {"key", ""}}), done());
  EXPECT_THAT(status().engines, Not(Contains(withKey)));
}

TEST_F(RealEngineTest, TextIsSpokenPausedAndStopped) {
  const QString text = QStringLiteral("Zwölf 😀 words, again and again. ").repeated(50);
  EXPECT_EQ(client().post("speak", {{"text", text}}), done());
  EXPECT_TRUE(status().isActive());
  EXPECT_EQ(status().chars, text.toUcs4().size());
  EXPECT_TRUE(reaches("speaking"));
  EXPECT_FALSE(status().error);
  EXPECT_EQ(client().post("toggle-pause"), done());
  EXPECT_EQ(status().state, QStringLiteral("paused"));
  EXPECT_EQ(client().post("toggle-pause"), done());
  EXPECT_EQ(status().state, QStringLiteral("speaking"));
  EXPECT_EQ(client().post("stop"), done());
  EXPECT_EQ(status().state, QStringLiteral("idle"));
  EXPECT_EQ(status().chars, 0);
}

TEST_F(RealEngineTest, ShortTextEndsByItself) {
  EXPECT_EQ(client().post("speak", {{"text", "Hello."}}), done());
  EXPECT_TRUE(reaches("idle"));
  EXPECT_FALSE(status().error);
}

}  // namespace
}  // namespace tavin::test
