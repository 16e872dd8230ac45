#include <gtest/gtest.h>

#include <QtEndian>
#include <optional>

#include "SocketPair.h"
#include "platform/windowlink/Channel.h"

namespace tavin::windowlink {
namespace {

using namespace tavin::test;

constexpr quint32 longest = 1 << 20;

class ChannelTest : public testing::Test, protected WithEventLoop {
 protected:
  ChannelTest() {
    SocketPair pair;
    peer = std::move(pair.other);
    channel.emplace(
        std::move(pair.one), longest,
        [this](const QByteArray& message) {
          messages.append(QByteArray(message.constData(), message.size()));
        },
        [this] { ++ends; });
  }

  void peerWrites(const QByteArray& bytes) const {
    ASSERT_EQ(::send(peer.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()), 0),
              bytes.size());
  }
  static QByteArray header(quint32 size) {
    QByteArray bytes(4, '\0');
    qToBigEndian(size, bytes.data());
    return bytes;
  }

  posix::FileDescriptor peer;
  QList<QByteArray> messages;
  int ends = 0;
  std::optional<Channel> channel;
};

TEST_F(ChannelTest, TellsMessagesInOrderHoweverTheyArrive) {
  peerWrites(header(3) + "one" + header(0) + header(5) + "th");
  ASSERT_TRUE(waitUntil([&] { return messages.size() == 2; }));
  peerWrites("ree");
  ASSERT_TRUE(waitUntil([&] { return messages.size() == 3; }));
  EXPECT_EQ(messages, QList<QByteArray>({"one", "", "three"}));
  EXPECT_EQ(ends, 0);
}

TEST_F(ChannelTest, TheOthersEndIsToldOnceAfterWhatItSaid) {
  peerWrites(header(4) + "last" + header(9) + "cut");
  peer.reset();
  ASSERT_TRUE(waitUntil([&] { return ends > 0; }));
  EXPECT_EQ(messages, QList<QByteArray>({"last"}));
  waitUntil([turns = 0]() mutable { return ++turns > 20; });
  EXPECT_EQ(ends, 1);
}

TEST_F(ChannelTest, AMessageThatIsTooLongIsTheEndBeforeItIsThere) {
  peerWrites(header(longest + 1));
  ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
  EXPECT_TRUE(messages.isEmpty());
}

TEST_F(ChannelTest, WaitsForNobodyWhoDoesNotRead) {
  const QByteArray big(8 << 20, 'x');
  QElapsedTimer taken;
  taken.start();
  channel->send(big);
  channel->send("after");
  EXPECT_LT(taken.elapsed(), 2000);
  qsizetype read = 0;
  EXPECT_TRUE(waitUntil([&] {
    char bytes[65536];
    const auto count = ::recv(peer.get(), bytes, sizeof bytes, MSG_DONTWAIT);
    read += std::max<ssize_t>(count, 0);
    return read == 4 + big.size() + 4 + 5;
  })) << read;
}

TEST_F(ChannelTest, MayBeDestroyedByWhatItTells) {
  SocketPair pair;
  int told = 0;
  std::optional<Channel> brief;
  brief.emplace(
      std::move(pair.one), longest,
      [&](const QByteArray&) {
        ++told;
        brief.reset();
      },
      [&] { ++ends; });
  channel.reset();
  peer = std::move(pair.other);
  peerWrites(header(1) + "a" + header(1) + "b");
  ASSERT_TRUE(waitUntil([&] { return told > 0; }));
  waitUntil([turns = 0]() mutable { return ++turns > 20; });
  EXPECT_EQ(told, 1);
  EXPECT_EQ(ends, 0);
}

TEST_F(ChannelTest, SendingToAnEndThatIsGoneHarmsNobody) {
  peer.reset();
  channel->send("lost");
  ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
  channel->send("lost too");
}

}  // namespace
}  // namespace tavin::windowlink
