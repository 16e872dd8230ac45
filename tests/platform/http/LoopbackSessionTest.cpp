#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <future>

#include "fake/FakeServices.h"
#include "platform/http/LoopbackSession.h"
#include "platform/http/RawServer.h"
#include "platform/http/Stranger.h"

namespace tavin::test {
namespace {

using namespace std::chrono_literals;
using http::LoopbackSession;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using Clock = std::chrono::steady_clock;
using Result = std::variant<UrlResponse, UrlError>;

class LoopbackSessionTest : public ::testing::Test {
 protected:
  static bool failed(const Result& result) { return std::holds_alternative<UrlError>(result); }
  static QByteArray body(const Result& result) {
    return std::get<UrlResponse>(result).body.value();
  }
  static UrlRequest get(const RawServer& server, double timeout = 10) {
    UrlRequest request;
    request.url = server.url();
    request.timeout = timeout;
    return request;
  }
  static UrlRequest post(const RawServer& server, const QByteArray& body) {
    UrlRequest request = get(server);
    request.method = "POST";
    request.headers = {{"Content-Type", "application/json"}, {"X-Tavin", "1"}};
    request.body = body;
    return request;
  }

  FakeLog log;
  LoopbackSession session{log};
};

TEST_F(LoopbackSessionTest, AnswersComeBackWithTheirStatusAndBody) {
  RawServer server([](const auto& peer) { peer.answer(R"({"a":1})"); });
  const Result result = session.dataTask(get(server));
  EXPECT_EQ(std::get<UrlResponse>(result).statusCode, 200);
  EXPECT_EQ(body(result), R"({"a":1})");
}

TEST_F(LoopbackSessionTest, EmptyBodyCountsAsPresent) {
  RawServer server([](const auto& peer) { peer.answer("", "204 No Content"); });
  const Result result = session.dataTask(get(server));
  EXPECT_EQ(std::get<UrlResponse>(result).statusCode, 204);
  EXPECT_EQ(body(result), "");
}

TEST_F(LoopbackSessionTest, InterimAnswersArePassedOver) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nLink: </x>\r\n\r\n");
    peer.answer(R"({"a":1})");
  });
  const Result result = session.dataTask(get(server));
  EXPECT_EQ(std::get<UrlResponse>(result).statusCode, 200);
  EXPECT_EQ(body(result), R"({"a":1})");
}

TEST_F(LoopbackSessionTest, EightInterimAnswersArePassedOverAndTheNinthFails) {
  std::atomic<int> interim = 8;
  RawServer server([&](const auto& peer) {
    peer.send(QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(interim));
    peer.answer("{}");
  });
  EXPECT_EQ(body(session.dataTask(get(server))), "{}");
  interim = 9;
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, InterimAnswerWithABodyFails) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 100 Continue\r\nContent-Length: 2\r\n\r\n{}");
    peer.answer("{}");
  });
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, InterimAnswersDelayNoDeadline) {
  RawServer server([](const auto& peer) {
    for (int i = 0; i < 8 && peer.send("HTTP/1.1 100 Continue\r\n\r\n"); ++i)
      std::this_thread::sleep_for(100ms);
    peer.answer("{}");
  });
  UrlRequest request = get(server, 0.3);
  request.deadline = 0.3;
  EXPECT_EQ(std::get<UrlError>(session.dataTask(request)).code, UrlError::timedOut);
}

TEST_F(LoopbackSessionTest, AnotherProtocolIsAnAnswerThatSaysNothing) {
  RawServer server(
      [](const auto& peer) { peer.send("HTTP/1.1 101 Switching Protocols\r\n\r\n{}"); });
  EXPECT_EQ(std::get<UrlResponse>(session.dataTask(get(server))).statusCode, 101);
}

TEST_F(LoopbackSessionTest, GetsCarryNoHeaderOfOurOwnAndPostsBoth) {
  RawServer server([](const auto& peer) { peer.answer("{}"); });
  session.dataTask(get(server));
  session.dataTask(post(server, R"({"text":"x"})"));
  const auto requests = server.requests();
  ASSERT_THAT(requests, SizeIs(2));
  EXPECT_TRUE(requests[0].startsWith("GET /status HTTP/1.1\r\n"));
  EXPECT_THAT(requests[0].toStdString(), Not(HasSubstr("Tavin")));
  EXPECT_TRUE(requests[1].startsWith("POST /status HTTP/1.1\r\n"));
  EXPECT_THAT(requests[1].toStdString(), HasSubstr("\r\nContent-Type: application/json\r\n"));
  EXPECT_THAT(requests[1].toStdString(), HasSubstr("\r\nX-Tavin: 1\r\n"));
  EXPECT_TRUE(requests[1].endsWith("\r\n\r\n{\"text\":\"x\"}"));
}

TEST_F(LoopbackSessionTest, LongBodyArrivesWhole) {
  const QByteArray text = R"({"text":")" + QByteArray(10'000'000, 'x') + R"("})";
  RawServer server([](const auto& peer) { peer.answer("{}"); });
  EXPECT_EQ(body(session.dataTask(post(server, text))), "{}");
  EXPECT_TRUE(server.requests()[0].endsWith(text));
  EXPECT_FALSE(server.requests()[0].left(1000).contains("Expect"));
}

TEST_F(LoopbackSessionTest, PostIsSentWithoutABodyWhereItHasNone) {
  RawServer server([](const auto& peer) { peer.answer("{}"); });
  UrlRequest request = post(server, "");
  request.body.reset();
  session.dataTask(request);
  EXPECT_TRUE(server.requests()[0].endsWith("\r\n\r\n"));
}

TEST_F(LoopbackSessionTest, PostThatIsTakenAndNotAnsweredIsNotSentAgain) {
  std::atomic<int> connections = 0;
  RawServer server([&](const auto& peer) {
    // The first one is answered and offers to stay open.
    if (++connections == 1)
      peer.answer("{}");
  });
  EXPECT_FALSE(failed(session.dataTask(post(server, R"({"n":1})"))));
  EXPECT_TRUE(failed(session.dataTask(post(server, R"({"n":2})"))));
  // A third request shows that nothing was sent between the two.
  session.dataTask(get(server));
  const auto requests = server.requests();
  ASSERT_THAT(requests, SizeIs(3));
  EXPECT_TRUE(requests[1].endsWith(R"({"n":2})"));
  EXPECT_TRUE(requests[2].startsWith("GET"));
}

TEST_F(LoopbackSessionTest, NothingListeningFailsAtOnce) {
  UrlRequest request;
  {
    RawServer server([](const auto&) {});
    request = get(server);
  }
  const auto start = Clock::now();
  EXPECT_EQ(std::get<UrlError>(session.dataTask(request)).code, UrlError::cannotConnectToHost);
  EXPECT_LT(Clock::now() - start, 2s);
}

TEST_F(LoopbackSessionTest, SilentPeerFailsAfterTheTimeout) {
  RawServer server([](const auto& peer) { peer.waitForClose(); });
  const auto start = Clock::now();
  EXPECT_EQ(std::get<UrlError>(session.dataTask(get(server, 0.3))).code, UrlError::timedOut);
  EXPECT_GE(Clock::now() - start, 300ms);
  EXPECT_LT(Clock::now() - start, 2s);
}

// Sends twelve bytes over 0.6 s, each well within an idle limit of 0.5 s.
void trickle(const RawServer::Peer& peer) {
  peer.send("HTTP/1.1 200 OK\r\nContent-Length: 12\r\n\r\n");
  for (int i = 0; i < 12 && peer.send("x"); ++i) std::this_thread::sleep_for(50ms);
}

TEST_F(LoopbackSessionTest, TrickledAnswerArrivesUnderAnIdleLimit) {
  RawServer server(trickle);
  EXPECT_EQ(body(session.dataTask(get(server, 0.5))), QByteArray(12, 'x'));
}

TEST_F(LoopbackSessionTest, TrickledAnswerFailsAtItsDeadline) {
  RawServer server(trickle);
  UrlRequest request = get(server, 0.3);
  request.deadline = 0.3;
  const auto start = Clock::now();
  EXPECT_TRUE(failed(session.dataTask(request)));
  EXPECT_GE(Clock::now() - start, 300ms);
  EXPECT_LT(Clock::now() - start, 550ms);
}

// Sends chunks of one byte for as long as anybody takes them.
void flood(const RawServer::Peer& peer) {
  peer.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
  while (peer.send("1;" + QByteArray(30'000, 'x') + "\r\nx\r\n")) {
  }
}

TEST_F(LoopbackSessionTest, AnswerThatNeverPausesFailsAtItsDeadline) {
  RawServer server(flood);
  UrlRequest request = get(server);
  request.deadline = 0.3;
  const auto start = Clock::now();
  EXPECT_EQ(std::get<UrlError>(session.dataTask(request)).code, UrlError::timedOut);
  EXPECT_GE(Clock::now() - start, 300ms);
  EXPECT_LT(Clock::now() - start, 2s);
}

// Listens, and treats connections by hand.
class BareListener {
 public:
  BareListener() {
    ::listen(socket_, 1);
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
  }
  ~BareListener() { ::close(socket_); }
  int accept() const { return ::accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC); }
  QString url() const { return QStringLiteral("http://127.0.0.1:%1/status").arg(port_); }

 private:
  const int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  int port_ = 0;
};

TEST_F(LoopbackSessionTest, BodyThatIsNotTakenFailsAfterTheTimeout) {
  const BareListener listener;  // The kernel makes the connection, and nobody reads.
  UrlRequest request{listener.url(), "POST", {}, QByteArray(50'000'000, 'x'), 0.3, std::nullopt};
  EXPECT_EQ(std::get<UrlError>(session.dataTask(request)).code, UrlError::timedOut);
}

TEST_F(LoopbackSessionTest, RefusalOfABodyThatIsNotTakenIsHeard) {
  const BareListener listener;
  const auto refusal = std::async(std::launch::async, [&] {
    const int connection = listener.accept();
    char first = 0;  // So that who we are was looked at.
    ::recv(connection, &first, 1, 0);
    const std::string_view answer = "HTTP/1.1 413 Too Large\r\nContent-Length: 0\r\n\r\n";
    ::send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
    ::close(connection);
  });
  UrlRequest request{listener.url(), "POST", {}, QByteArray(50'000'000, 'x'), 10, std::nullopt};
  EXPECT_EQ(std::get<UrlResponse>(session.dataTask(request)).statusCode, 413);
}

// An answer whose head is followed by `part` again and again.
auto endless(const QByteArray& head, const QByteArray& part) {
  return [head, part](const RawServer::Peer& peer) {
    peer.send("HTTP/1.1 200 OK\r\n" + head);
    for (int i = 0; i < 3000 && peer.send(part); ++i) {
    }
  };
}

TEST_F(LoopbackSessionTest, AnswerWithoutALengthFailsBeyondTheCap) {
  RawServer server(endless("\r\n", QByteArray(1000, 'x')));
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, AnswerInChunksFailsBeyondTheCap) {
  RawServer server(
      endless("Transfer-Encoding: chunked\r\n\r\n", "3e8\r\n" + QByteArray(1000, 'x') + "\r\n"));
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, AnswerWithAChunksHeadWithoutEndFails) {
  std::atomic<int> taken = 0;
  RawServer server([&](const auto& peer) {
    peer.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1;");
    while (peer.send(QByteArray(1'000'000, 'x'))) ++taken;
  });
  EXPECT_TRUE(failed(session.dataTask(get(server))));
  EXPECT_LT(taken, 20);
}

TEST_F(LoopbackSessionTest, AnswerBeyondTheCapFails) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 200 OK\r\nContent-Length: 100000000\r\n\r\n");
    const QByteArray block(1'000'000, 'x');
    for (int i = 0; i < 100 && peer.send(block); ++i) {
    }
  });
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, AnswerInChunksIsPutTogether) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n");
    peer.send("1\r\n!\r\n0\r\n\r\n");
  });
  EXPECT_EQ(body(session.dataTask(get(server))), "hello!");
}

TEST_F(LoopbackSessionTest, AnswerWithoutALengthEndsWithItsConnection) {
  RawServer server([](const auto& peer) { peer.send("HTTP/1.1 200 OK\r\n\r\nhello"); });
  EXPECT_EQ(body(session.dataTask(get(server))), "hello");
}

TEST_F(LoopbackSessionTest, AnswerWithAHeadWithoutEndFails) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 200 OK\r\n");
    while (peer.send("X-Filler: " + QByteArray(1000, 'x') + "\r\n")) {
    }
  });
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, AnswerThatBreaksOffFails) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this");
  });
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, AnswerThatIsNoHttpFails) {
  RawServer server([](const auto& peer) { peer.send("hello\r\n\r\n"); });
  EXPECT_TRUE(failed(session.dataTask(get(server))));
}

TEST_F(LoopbackSessionTest, RedirectIsNotFollowed) {
  RawServer server([](const auto& peer) {
    peer.send("HTTP/1.1 302 Found\r\nLocation: /other\r\nContent-Length: 0\r\n\r\n");
  });
  EXPECT_EQ(std::get<UrlResponse>(session.dataTask(get(server))).statusCode, 302);
  EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(LoopbackSessionTest, ProxyOfTheEnvironmentIsNotAsked) {
  RawServer server([](const auto& peer) { peer.answer("direct"); });
  RawServer proxy([](const auto& peer) { peer.answer("through the proxy"); });
  const QByteArray address = proxy.url(QString()).toUtf8();
  for (const char* name : {"http_proxy", "all_proxy", "ALL_PROXY"}) qputenv(name, address);
  EXPECT_EQ(body(session.dataTask(get(server))), "direct");
  for (const char* name : {"http_proxy", "all_proxy", "ALL_PROXY"}) qunsetenv(name);
  EXPECT_THAT(proxy.requests(), IsEmpty());
}

TEST_F(LoopbackSessionTest, ListenerOfAnotherUserGetsNoByteAndOneLogLine) {
  RawServer server([](const auto& peer) { peer.answer("{}"); });
  LoopbackSession ofSomebodyElse(log, ::geteuid() + 1);
  EXPECT_TRUE(failed(ofSomebodyElse.dataTask(post(server, R"({"key":"secret"})"))));
  EXPECT_TRUE(failed(ofSomebodyElse.dataTask(get(server))));
  EXPECT_THAT(log.lines, ElementsAre("Tavin: the engine's port is held by another user's program: "
                                     "nothing is sent there"));
  EXPECT_EQ(body(session.dataTask(get(server))), "{}");
  EXPECT_THAT(server.requests(), ElementsAre(HasSubstr("GET /status")));
}

TEST_F(LoopbackSessionTest, SandboxedListenerIsNotConnectedToAndToldOnce) {
  const Stranger stranger(Stranger::Place::otherNamespaces);
  UrlRequest request;
  request.url = QStringLiteral("http://127.0.0.1:%1/status").arg(stranger.port());
  EXPECT_TRUE(failed(session.dataTask(request)));
  EXPECT_TRUE(failed(session.dataTask(request)));
  EXPECT_FALSE(stranger.wasConnectedTo());
  EXPECT_THAT(log.lines,
              ElementsAre(HasSubstr("is held by a sandboxed program, “http_session_te” "
                                    "(process " +
                                    std::to_string(stranger.pid()) + "): nothing is sent there")));
}

TEST_F(LoopbackSessionTest, ListenerThatWaitsToAcceptIsTrustedLikeOneThatAccepted) {
  // The kernel has made the connection when nobody has accepted it yet.
  const BareListener listener;
  UrlRequest request{listener.url(), "GET", {}, std::nullopt, 0.3, std::nullopt};
  EXPECT_TRUE(failed(session.dataTask(request)));
  const int connection = listener.accept();
  char begin[4] = {};
  EXPECT_EQ(::recv(connection, begin, 3, 0), 3);
  EXPECT_STREQ(begin, "GET");
  ::close(connection);
}

}  // namespace
}  // namespace tavin::test
