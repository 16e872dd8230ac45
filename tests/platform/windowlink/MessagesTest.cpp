#include <gtest/gtest.h>

#include <QDataStream>
#include <QIODevice>
#include <random>

#include "platform/windowlink/Messages.h"

namespace tavin::windowlink {
namespace {

Request anAlert() {
  return ShowAlert{7, {"heading", "<b>text</b>\n", {"Save", "Cancel"}, true}, true, "token"};
}

Request aMenu() {
  MenuLine command{.title = "a & b\tc", .toggle = Toggle::radio, .checked = true, .number = 3};
  MenuLine submenu{.kind = MenuLine::Kind::submenu, .title = "more", .lines = {command, command}};
  MenuLine separator{.kind = MenuLine::Kind::separator};
  return ShowMenu{8, QPoint(-4, 5), {command, separator, submenu}, {}};
}

std::vector<Request> requests() {
  return {Ping(),
          Finish(),
          anAlert(),
          BringAlertToFront{"token"},
          CloseAlert(),
          aMenu(),
          ShowMenu{9, std::nullopt, {}, "token"},
          CloseMenu(),
          ShowIcon{"waveform", "Tavin\nNot reading"}};
}

std::vector<Event> events() {
  return {Pong(),
          Finished(),
          AlertAnswered{7, {AlertResponse::firstButton, "typed \U0001F511"}},
          MenuClosed{8, 3},
          MenuClosed{8, std::nullopt},
          IconClicked()};
}

TEST(MessagesTest, EachArrivesAsItWasSent) {
  for (const Request& request : requests()) {
    const auto read = decodeRequest(encode(request));
    ASSERT_TRUE(read) << request.index();
    EXPECT_EQ(encode(*read), encode(request));
  }
  for (const Event& event : events()) {
    const auto read = decodeEvent(encode(event));
    ASSERT_TRUE(read) << event.index();
    EXPECT_EQ(encode(*read), encode(event));
  }
}

TEST(MessagesTest, AnAlertAndItsAnswerKeepAllThatTheySay) {
  const auto read = decodeRequest(encode(anAlert()));
  const auto& shown = std::get<ShowAlert>(*read);
  EXPECT_EQ(shown.id, 7U);
  EXPECT_EQ(shown.alert.messageText, "heading");
  EXPECT_EQ(shown.alert.informativeText, "<b>text</b>\n");
  EXPECT_EQ(shown.alert.buttons, QStringList({"Save", "Cancel"}));
  EXPECT_TRUE(shown.alert.secureField);
  EXPECT_TRUE(shown.inFront);
  EXPECT_EQ(shown.token, "token");
  const QString typed = QStringLiteral(" key & ") + QChar(0xd800);  // Half a pair stays that.
  const auto answer = decodeEvent(encode(Event(AlertAnswered{7, {1001, typed}})));
  EXPECT_EQ(std::get<AlertAnswered>(*answer).response.text, typed);
  EXPECT_EQ(std::get<AlertAnswered>(*answer).response.button, 1001);
}

TEST(MessagesTest, AMenuKeepsItsLines) {
  const auto read = decodeRequest(encode(aMenu()));
  const auto& menu = std::get<ShowMenu>(*read);
  EXPECT_EQ(menu.position, QPoint(-4, 5));
  ASSERT_EQ(menu.lines.size(), 3U);
  EXPECT_EQ(menu.lines[0].title, "a & b\tc");
  EXPECT_EQ(menu.lines[0].toggle, Toggle::radio);
  EXPECT_TRUE(menu.lines[0].checked);
  EXPECT_EQ(menu.lines[1].kind, MenuLine::Kind::separator);
  ASSERT_EQ(menu.lines[2].lines.size(), 2U);
  EXPECT_EQ(menu.lines[2].lines[1].number, 3U);
}

template <typename Decode>
void expectNoPartIsAMessage(const QByteArray& whole, Decode decode) {
  for (qsizetype length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(decode(whole.first(length))) << length << " of " << whole.size();
  EXPECT_FALSE(decode(whole + '\0'));
}

TEST(MessagesTest, OneThatIsCutOffOrGoesOnIsNone) {
  for (const Request& request : requests()) expectNoPartIsAMessage(encode(request), decodeRequest);
  for (const Event& event : events()) expectNoPartIsAMessage(encode(event), decodeEvent);
}

TEST(MessagesTest, OneOfNoKnownKindIsNone) {
  for (const int kind : {8, 9, 127, 255})
    EXPECT_FALSE(decodeRequest(QByteArray(1, static_cast<char>(kind)))) << kind;
  for (const int kind : {5, 6, 127, 255})
    EXPECT_FALSE(decodeEvent(QByteArray(1, static_cast<char>(kind)))) << kind;
}

TEST(MessagesTest, AValueThatThereIsNotIsNone) {
  QByteArray chosen = encode(Event(MenuClosed{8, std::nullopt}));
  chosen.back() = 2;  // Neither that one was chosen nor that none was.
  EXPECT_FALSE(decodeEvent(chosen));
}

// Lengths and counts that no message of ours has.
TEST(MessagesTest, AHugeCountTakesNoMemoryAndIsNone) {
  for (const quint32 count : {0xffffffffU, 0xfffffffeU, 0x7fffffffU, 0x10000000U}) {
    QByteArray answer;
    QDataStream(&answer, QIODevice::WriteOnly) << quint8(2) << quint32(7) << qint32(0) << count;
    EXPECT_EQ(decodeEvent(answer).has_value(), count == 0xffffffffU) << "which is Qt's null text";
    QByteArray menu;
    QDataStream(&menu, QIODevice::WriteOnly) << quint8(5) << quint32(7) << false << count;
    EXPECT_FALSE(decodeRequest(menu));
  }
}

TEST(MessagesTest, AMenuWithoutEndIsNone) {
  MenuLine line;
  for (int depth = 0; depth < 10'000; ++depth) {
    MenuLine above{.kind = MenuLine::Kind::submenu};
    above.lines.push_back(std::move(line));
    line = std::move(above);
  }
  ShowMenu menu;
  menu.lines.push_back(std::move(line));
  EXPECT_FALSE(decodeRequest(encode(Request(std::move(menu)))));
}

// Whatever the bytes are, reading them ends, and what was read can be written.
TEST(MessagesTest, AnyBytesAreAMessageOrNone) {
  std::mt19937 random(1);
  const QByteArray menu = encode(aMenu());
  int read = 0;
  for (int round = 0; round < 20'000; ++round) {
    QByteArray bytes = menu;
    for (int change = 0; change < 3; ++change)
      bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] =
          static_cast<char>(random());
    if (const auto request = decodeRequest(bytes)) {
      ++read;
      EXPECT_TRUE(decodeRequest(encode(*request)));
    }
    if (const auto event = decodeEvent(bytes)) {
      EXPECT_TRUE(decodeEvent(encode(*event)));
    }
  }
  EXPECT_GT(read, 0);
}

}  // namespace
}  // namespace tavin::windowlink
