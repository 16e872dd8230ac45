#include <gtest/gtest.h>

#include <QJsonArray>

#include "engine/EngineStatus.h"
#include "fake/FakeEngine.h"

namespace tavin::test {
namespace {

std::optional<EngineStatus> decode(const QJsonObject& object) {
  return EngineStatus::decode(QJsonDocument(object).toJson());
}

// The ordinary status with one value replaced as text, for what QJsonValue cannot hold.
std::optional<EngineStatus> decodeWith(const QByteArray& key, const QByteArray& value) {
  QByteArray json =
      R"({"state":"idle","chars":0,"engine":"e","voice":"v","speed":1,"ready":true,"engines":[])";
  const qsizetype at = json.indexOf("\"" + key + "\":");
  if (at < 0)
    return EngineStatus::decode(json + ",\"" + key + "\":" + value + "}");
  const qsizetype from = at + key.size() + 3;
  const qsizetype to = json.indexOf(",\"", from);
  json.replace(from, (to < 0 ? json.size() : to) - from, value);
  return EngineStatus::decode(json + "}");
}

QJsonObject idle() { return FakeEngine::idleStatus(); }

QJsonObject with(QJsonObject object, const QString& key, const QJsonValue& value) {
  object[key] = value;
  return object;
}

TEST(EngineStatusTest, SevenRequiredKeysAloneDecodeWithTheOthersAbsent) {
  const auto status = decode(idle());
  ASSERT_TRUE(status);
  const EngineStatus expected{
      .state = "idle",
      .chars = 0,
      .error = std::nullopt,
      .engine = "espeak",
      .voice = "en-gb",
      .speed = 1.0,
      .ready = true,
      .download = std::nullopt,
      .setupError = std::nullopt,
      .engines = {{"espeak", "eSpeak NG", true}, {"openai", "OpenAI", false}}};
  EXPECT_EQ(*status, expected);
}

TEST(EngineStatusTest, NullErrorAndDownloadDecodeLikeMissingOnes) {
  QJsonObject object = idle();
  object["error"] = QJsonValue();
  object["download"] = QJsonValue();
  object["setup_error"] = QJsonValue();
  EXPECT_EQ(decode(object), decode(idle()));
  EXPECT_TRUE(decode(object));
}

TEST(EngineStatusTest, OptionalValuesAreRead) {
  QJsonObject object = idle();
  object["error"] = "lost";
  object["download"] = 0.427;
  object["setup_error"] = "disk full";
  object["setupError"] = "not this one";
  const auto status = decode(object);
  ASSERT_TRUE(status);
  EXPECT_EQ(status->error, QStringLiteral("lost"));
  EXPECT_EQ(status->download, 0.427);
  EXPECT_EQ(status->setupError, QStringLiteral("disk full"));
}

TEST(EngineStatusTest, MessagesCarryTheirNamesAndWhatWasFilledIn) {
  QJsonObject object = idle();
  object["error"] = "The key for X cannot be read: locked";
  object["error_id"] = "key-unreadable";
  object["error_values"] =
      QJsonArray{"X", QJsonObject{{"text", "locked"}, {"id", "keyring-locked"}, {"values", {}}}};
  const auto status = decode(object);
  ASSERT_TRUE(status);
  const EngineMessage inner{.text = "locked", .id = "keyring-locked", .values = {}};
  const EngineMessage expected{.text = "The key for X cannot be read: locked",
                               .id = "key-unreadable",
                               .values = {{.text = "X", .id = {}, .values = {}}, inner}};
  EXPECT_EQ(status->errorMessage, expected);
  EXPECT_EQ(status->setupErrorMessage, EngineMessage());
}

TEST(EngineStatusTest, NamesOfAnotherTypeLeaveTheTextAsItIs) {
  QJsonObject object = idle();
  object["setup_error"] = "disk full";
  const auto named = [&object](const QJsonValue& id, const QJsonValue& values) {
    object["setup_error_id"] = id;
    object["setup_error_values"] = values;
    return decode(object);
  };
  for (const QJsonValue& odd : {QJsonValue(7), QJsonValue(), QJsonValue(QJsonObject())}) {
    const auto status = named(odd, odd);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->setupErrorMessage.words().shown, QStringLiteral("disk full"));
  }
}

TEST(EngineStatusTest, EachRequiredKeyIsRequiredAndNotNull) {
  for (const QString& key : idle().keys()) {
    QJsonObject object = idle();
    object.remove(key);
    EXPECT_FALSE(decode(object)) << key.toStdString();
    EXPECT_FALSE(decode(with(idle(), key, QJsonValue()))) << key.toStdString();
  }
}

TEST(EngineStatusTest, ValuesOfAnotherTypeAreUndecodable) {
  for (const char* key : {"state", "engine", "voice", "error", "setup_error"})
    EXPECT_FALSE(decode(with(idle(), key, 1))) << key;
  for (const char* key : {"chars", "speed", "download", "ready", "engines"})
    EXPECT_FALSE(decode(with(idle(), key, "1"))) << key;
  EXPECT_FALSE(decode(with(idle(), "ready", 1)));
  EXPECT_FALSE(decode(with(idle(), "chars", true)));
  EXPECT_FALSE(decode(with(idle(), "engines", QJsonObject())));
}

TEST(EngineStatusTest, KeysAreMatchedExactly) {
  QJsonObject object = idle();
  object.remove("state");
  object["State"] = "idle";
  EXPECT_FALSE(decode(object));
}

TEST(EngineStatusTest, UnknownKeysAreIgnored) {
  QJsonObject object = idle();
  object["future"] = QJsonArray{1, QJsonObject{{"a", QJsonValue()}}};
  EXPECT_TRUE(decode(object));
}

TEST(EngineStatusTest, FractionalCharsAreUndecodable) {
  EXPECT_FALSE(decodeWith("chars", "1.5"));
  EXPECT_FALSE(decodeWith("chars", "1e-1"));
}

TEST(EngineStatusTest, CharsAreExactSixtyFourBitIntegers) {
  EXPECT_EQ(decodeWith("chars", "1.0")->chars, 1);
  EXPECT_EQ(decodeWith("chars", "1e2")->chars, 100);
  EXPECT_EQ(decodeWith("chars", "9223372036854775807")->chars, INT64_MAX);
  EXPECT_EQ(decodeWith("chars", "-9223372036854775808")->chars, INT64_MIN);
  EXPECT_EQ(decodeWith("chars", "9007199254740993")->chars, 9007199254740993);
  EXPECT_FALSE(decodeWith("chars", "9223372036854775808"));
  EXPECT_FALSE(decodeWith("chars", "-9223372036854775809"));
  EXPECT_FALSE(decodeWith("chars", "-9223372036854776000"));
  EXPECT_FALSE(decodeWith("chars", "-9300000000000000000"));
  EXPECT_FALSE(decodeWith("chars", "1e300"));
}

TEST(EngineStatusTest, IntegerSpeedIsANumber) {
  EXPECT_EQ(decodeWith("speed", "1")->speed, 1.0);
  EXPECT_EQ(decodeWith("speed", "9223372036854775808")->speed, 0x1p63);
}

TEST(EngineStatusTest, NestedFailureFailsTheWhole) {
  QJsonObject lacking = FakeEngine::info("a", "A", true);
  lacking.remove("available");
  const QJsonArray good{FakeEngine::info("a", "A", true)};
  for (const QJsonValue& bad : {QJsonValue(lacking), QJsonValue("text"), QJsonValue(),
                                QJsonValue(with(good[0].toObject(), "available", 1))}) {
    QJsonArray engines = good;
    engines.append(bad);
    EXPECT_FALSE(decode(with(idle(), "engines", engines)));
  }
  EXPECT_TRUE(decode(with(idle(), "engines", good)));
}

TEST(EngineStatusTest, BytesThatAreNoStatusAreUndecodable) {
  const QByteArray whole = QJsonDocument(idle()).toJson();
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("null"), QByteArray("[]"), QByteArray("\xff\xfe{}"),
        whole.left(whole.size() / 2), whole + "x", QByteArray("\0", 1) + whole,
        whole + QByteArray("\0x", 2), QByteArray(100'000, '['),
        QByteArray("{\"a\":").repeated(100'000)})
    EXPECT_FALSE(EngineStatus::decode(bytes));
  EXPECT_FALSE(decodeWith("speed", "NaN"));
  EXPECT_FALSE(decodeWith("speed", "Infinity"));
  EXPECT_FALSE(decodeWith("speed", "1e999"));
  EXPECT_FALSE(decodeWith("voice", "\"\xff\""));
  EXPECT_FALSE(decodeWith("voice", "\"\xed\xa0\x80\""));
}

TEST(EngineStatusTest, NumbersThatAreNoJsonAreUndecodable) {
  for (const char* number :
       {"1.", ".5", "-", "+1", "01", "-01", "1e", "1e+", "1.e1", "0x1", "1.5.5"})
    EXPECT_FALSE(decodeWith("speed", number)) << number;
  for (const char* number : {"0", "-0", "1.5", "1E2", "1e+2", "0.5e-2", "-1", "10"})
    EXPECT_TRUE(decodeWith("speed", number)) << number;
}

TEST(EngineStatusTest, StringsThatAreNoJsonAreUndecodable) {
  for (const QByteArray& text :
       {QByteArray(R"("\q")"), QByteArray("\"a\nb\""), QByteArray("\"\t\""),
        QByteArray("\"\0\"", 3), QByteArray(R"("\u12g4")"), QByteArray(R"("\u12")"),
        QByteArray(R"("\U0041")")})
    EXPECT_FALSE(decodeWith("voice", text)) << text.toStdString();
  EXPECT_EQ(decodeWith("voice", R"("\"\\\/\b\f\n\r\t\u0041\u00e4\uFFFF")")->voice,
            QStringLiteral("\"\\/\b\f\n\r\tA\u00e4\uffff"));
}

TEST(EngineStatusTest, HalfACharacterIsUndecodable) {
  for (const char* text : {R"("\ud83d")", R"("\ude00")", R"("\ude00\ud83d")", R"("\ud83dx")",
                           R"("\ud83d\n")", R"("\ud83d\u0041")"})
    EXPECT_FALSE(decodeWith("voice", text)) << text;
  EXPECT_EQ(decodeWith("voice", R"("\ud83d\uDE00")")->voice, QString::fromUcs4(U"\U0001f600"));
}

TEST(EngineStatusTest, EveryTruncationIsUndecodable) {
  const QByteArray whole = QJsonDocument(idle()).toJson(QJsonDocument::Compact);
  for (qsizetype length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(EngineStatus::decode(whole.left(length))) << length;
}

TEST(EngineStatusTest, HugeBodyIsDecodedOrRefusedWithoutACrash) {
  const QByteArray huge(10'000'000, 'x');
  EXPECT_FALSE(EngineStatus::decode(huge));
  EXPECT_FALSE(EngineStatus::decode('"' + huge));
}

TEST(EngineStatusTest, MessagesInsideOneAnotherWithoutEndAreUndecodable) {
  const auto nested = [](int levels) {
    return QByteArray("[") + QByteArray("{\"values\":[").repeated(levels) +
           QByteArray("]}").repeated(levels) + "]";
  };
  EXPECT_TRUE(decodeWith("error_values", nested(3)));
  EXPECT_FALSE(decodeWith("error_values", nested(50'000)));
}

TEST(EngineStatusTest, OnlyTheThreeExactStatesAreActive) {
  for (const char* state : {"speaking", "loading", "paused"})
    EXPECT_TRUE(decode(with(idle(), "state", state))->isActive()) << state;
  for (const char* state : {"", "idle", "Speaking", "PAUSED", "loading ", "stopped"})
    EXPECT_FALSE(decode(with(idle(), "state", state))->isActive()) << state;
}

TEST(EngineStatusTest, DownloadIsAWholeTruncatedPercentage) {
  const auto percent = [](double download) {
    return decode(with(idle(), "download", download))->downloadPercent();
  };
  EXPECT_EQ(percent(0.427), 42);
  EXPECT_EQ(percent(1.0), 100);
  EXPECT_EQ(percent(0.999), 99);
  EXPECT_EQ(percent(-0.005), 0);
  EXPECT_EQ(percent(9e16), 9'000'000'000'000'000'000);
}

TEST(EngineStatusDeathTest, DownloadBeyondAnIntegerStopsTheProcess) {
  for (const double download : {0x1p63 / 100 * 1.01, -1e30}) {
    const auto status = decode(with(idle(), "download", download));
    EXPECT_DEATH(status->downloadPercent(), "download is no fraction");
  }
  EngineStatus status;
  status.download = std::nan("");
  EXPECT_DEATH(status.downloadPercent(), "download is no fraction");
}

TEST(VoiceTest, ArrayOfVoicesDecodesInOrder) {
  const auto voices =
      Voice::decodeList(R"([{"id":"a","name":"A","more":1},{"id":"b","name":"B"}])");
  EXPECT_EQ(voices, (std::vector<Voice>{{"a", "A"}, {"b", "B"}}));
  EXPECT_EQ(Voice::decodeList("[]"), std::vector<Voice>());
}

TEST(VoiceTest, ObjectInsteadOfAnArrayIsUndecodable) {
  EXPECT_FALSE(Voice::decodeList(R"({"id":"a","name":"A"})"));
}

TEST(VoiceTest, OneBadVoiceMakesTheListUndecodable) {
  EXPECT_FALSE(Voice::decodeList(R"([{"id":"a","name":"A"},{"id":"b"}])"));
  EXPECT_FALSE(Voice::decodeList(R"([{"id":1,"name":"A"}])"));
  EXPECT_FALSE(Voice::decodeList(R"([null])"));
}

}  // namespace
}  // namespace tavin::test
