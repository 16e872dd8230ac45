#include <gmock/gmock.h>

#include <cmath>

#include "engine/EngineClient.h"
#include "fake/FakePlatform.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class EngineClientTest : public ::testing::Test {
 protected:
  const UrlRequest& last() const { return fakes.engine.requests.back(); }

  FakePlatform fakes;
  const std::shared_ptr<EngineClient> client =
      std::make_shared<EngineClient>(EngineClient::Services{
          fakes.engine, {fakes.launcher, fakes.mainQueue, fakes.log, fakes.platform.bundle}});
};

TEST_F(EngineClientTest, StatusIsAPlainGetWithItsTimeout) {
  EXPECT_TRUE(client->status(0.4));
  EXPECT_EQ(last().url, QStringLiteral("http://127.0.0.1:47632/status"));
  EXPECT_EQ(last().method, "GET");
  EXPECT_THAT(last().headers, IsEmpty());
  EXPECT_FALSE(last().body);
  EXPECT_EQ(last().timeout, 0.4);
  client->status();
  EXPECT_EQ(last().timeout, 1.0);
}

TEST_F(EngineClientTest, ALimitBoundsTheWholeRequestForWhoeverSaysSoAndOnlyIdleTimeElse) {
  client->status(0.4, TimeLimit::total);
  EXPECT_EQ(last().timeout, 0.4);
  EXPECT_EQ(last().deadline, 0.4);
  client->status(0.5);
  EXPECT_EQ(last().timeout, 0.5);
  EXPECT_FALSE(last().deadline);
}

TEST_F(EngineClientTest, TheStatusAtLaunchIsBoundedAsAWhole) {
  client->startIfNeeded();
  EXPECT_EQ(last().deadline, 0.5);
}

TEST_F(EngineClientTest, VoicesNameTheEngineWithSpacesAsPercentTwenty) {
  client->voices(QStringLiteral("my engine&é=+"));
  EXPECT_EQ(last().url,
            QStringLiteral("http://127.0.0.1:47632/voices?engine=my%20engine%26%C3%A9%3D%2B"));
  EXPECT_EQ(last().timeout, 20);
  EXPECT_EQ(last().method, "GET");
  EXPECT_THAT(last().headers, IsEmpty());
}

TEST_F(EngineClientTest, PostWithoutBodySendsBothHeadersAndAnEmptyObject) {
  EXPECT_EQ(client->post("toggle-pause"), QJsonObject());
  EXPECT_EQ(last().url, QStringLiteral("http://127.0.0.1:47632/toggle-pause"));
  EXPECT_EQ(last().method, "POST");
  EXPECT_THAT(last().headers,
              ElementsAre(Pair("Content-Type", "application/json"), Pair("X-Tavin", "1")));
  EXPECT_EQ(last().body, QByteArray("{}"));
  EXPECT_EQ(last().timeout, 60);
}

TEST_F(EngineClientTest, PostSerialisesItsBodyCompactly) {
  client->post("config", {{"speed", 1.25}});
  EXPECT_EQ(last().body, QByteArray("{\"speed\":1.25}"));
}

TEST_F(EngineClientTest, BodyThatIsNoJsonIsSentAsNone) {
  client->post("config", {{"speed", std::nan("")}});
  EXPECT_FALSE(last().body);
  client->post("config", {{"list", QJsonArray{QJsonObject{{"x", INFINITY}}}}});
  EXPECT_FALSE(last().body);
}

TEST_F(EngineClientTest, NothingListeningIsAbsentAndEmpty) {
  fakes.engine.reachable = false;
  EXPECT_FALSE(client->status());
  EXPECT_THAT(client->voices("espeak"), IsEmpty());
  EXPECT_FALSE(client->post("stop"));
}

TEST_F(EngineClientTest, EveryStatusButTwoHundredIsAFailure) {
  for (const int code : {201, 204, 301, 400, 404, 500}) {
    fakes.engine.answerWith("status", code, QJsonDocument(FakeEngine::idleStatus()).toJson());
    fakes.engine.answerWith("voices", code, QByteArray(R"([{"id":"a","name":"A"}])"));
    fakes.engine.answerWith("stop", code, QByteArray("{}"));
    EXPECT_FALSE(client->status()) << code;
    EXPECT_THAT(client->voices("espeak"), IsEmpty()) << code;
    EXPECT_FALSE(client->post("stop")) << code;
  }
}

TEST_F(EngineClientTest, MissingBodyIsAFailure) {
  fakes.engine.answerWith("stop", 200, std::nullopt);
  EXPECT_FALSE(client->post("stop"));
}

TEST_F(EngineClientTest, EmptyReplyToAPostIsAbsentAndNoEmptyObject) {
  fakes.engine.answerWith("stop", 200, QByteArray());
  EXPECT_FALSE(client->post("stop"));
}

TEST_F(EngineClientTest, ReplyThatIsAnArrayIsAbsent) {
  fakes.engine.answerWith("stop", 200, QByteArray("[]"));
  EXPECT_FALSE(client->post("stop"));
}

TEST_F(EngineClientTest, ReplyObjectIsReturned) {
  fakes.engine.answerWith("stop", 200, QByteArray("{\"ok\":true}"));
  EXPECT_EQ(client->post("stop"), (QJsonObject{{"ok", true}}));
}

TEST_F(EngineClientTest, VoicesThatAreAnObjectAreNone) {
  fakes.engine.answerWith("voices", 200, QByteArray(R"({"id":"a","name":"A"})"));
  EXPECT_THAT(client->voices("espeak"), IsEmpty());
  fakes.engine.answerWith("voices", 200, QByteArray(R"({"voices":[{"id":"a","name":"A"}]})"));
  EXPECT_THAT(client->voices("espeak"), IsEmpty());
}

TEST_F(EngineClientTest, VoicesKeepTheEnginesOrder) {
  fakes.engine.answerWith("voices", 200,
                          QByteArray(R"([{"id":"z","name":"Z"},{"id":"a","name":"A"}])"));
  EXPECT_THAT(client->voices("espeak"), ElementsAre(Voice{"z", "Z"}, Voice{"a", "A"}));
}

TEST_F(EngineClientTest, EveryRequestGoesToTheLoopbackAddressOnly) {
  fakes.engine.reachable = false;
  client->status();
  client->voices("espeak");
  client->post("speak", {{"text", "x"}});
  for (const UrlRequest& request : fakes.engine.requests)
    EXPECT_TRUE(request.url.startsWith("http://127.0.0.1:47632/"));
  EXPECT_EQ(fakes.engine.requests.size(), 3U);
}

}  // namespace
}  // namespace tavin::test
