#include "platform/http/HttpTransfer.h"

#include <sys/socket.h>

#include <QUrl>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/serializer.hpp>
#include <boost/beast/http/span_body.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <optional>
#include <string>

namespace tavin::http {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
using beast::error_code;
using Clock = std::chrono::steady_clock;
using Body = beast::http::span_body<const char>;
using Result = std::variant<UrlResponse, UrlError>;

constexpr unsigned http11 = 11;
// Holds an answer's head, a chunk's or what follows the last one: without end they are an error.
constexpr std::size_t bufferSize = std::size_t{64} * 1024;
// More before the answer itself are an error: the idle limit begins again with each of them.
constexpr int mostInterimAnswers = 8;

beast::string_view view(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

Clock::duration seconds(double value) {
  return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(value));
}

beast::http::request<Body> messageOf(const UrlRequest& request) {
  const QUrl url(request.url);
  beast::http::request<Body> message;
  message.version(http11);
  message.method_string(view(request.method));
  message.target(view(url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority)));
  message.set(beast::http::field::host, view(url.authority().toLatin1()));
  message.set(beast::http::field::connection, "close");
  for (const auto& [name, value] : request.headers) message.set(view(name), view(value));
  if (request.body)
    message.body() = {request.body->constData(), static_cast<std::size_t>(request.body->size())};
  message.prepare_payload();
  return message;
}

class Transfer {
 public:
  Transfer(const UrlRequest& request, const TransferLimits& limits)
      : idle_(seconds(request.timeout)),
        end_(request.deadline ? limits.start + seconds(*request.deadline)
                              : Clock::time_point::max()),
        answerSize_(limits.answerSize) {}

  error_code connect(std::uint16_t port) {
    const asio::ip::tcp::endpoint engine(asio::ip::address_v4::loopback(), port);
    // No program that is started meanwhile inherits it, which asio's own would be.
    error_code error;
    stream_.socket().assign(engine.protocol(), ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0),
                            error);
    if (error)
      return error;
    return await([&](auto done) { stream_.async_connect(engine, done); });
  }

  std::uint16_t ownPort() {
    error_code error;
    return stream_.socket().local_endpoint(error).port();
  }

  error_code send(const UrlRequest& request) {
    auto message = messageOf(request);
    beast::http::request_serializer<Body> serializer(message);
    error_code error;
    while (!error && !serializer.is_done())
      error = await(
          [&](auto done) { beast::http::async_write_some(stream_, serializer, std::move(done)); });
    return error;
  }

  // The answer itself, past those that only announce it.
  error_code receive() {
    for (int interim = 0; interim <= mostInterimAnswers; ++interim) {
      const error_code error = receiveOne();
      if (error || !isInterim())
        return error;
    }
    return beast::http::error::header_limit;
  }

  UrlResponse response() const {
    const auto& answer = parser_->get();
    return {static_cast<int>(answer.result_int()), QByteArray::fromStdString(answer.body())};
  }

 private:
  error_code receiveOne() {
    parser_.emplace().body_limit(answerSize_);
    error_code error;
    while (!error && !parser_->is_done())
      error = await([&](auto done) {
        beast::http::async_read_some(stream_, buffer_, *parser_, std::move(done));
      });
    return error;
  }

  // "Switching Protocols" is the last that is said in HTTP.
  bool isInterim() const {
    const unsigned status = parser_->get().result_int();
    return status / 100 == 1 && status != 101;
  }

  // Has one operation move some bytes, or take a whole head. It fails when that takes longer than
  // the idle limit, and at the deadline, which an operation whose bytes are there would not meet.
  template <typename Start>
  error_code await(Start start) {
    if (Clock::now() >= end_)
      return beast::error::timeout;
    error_code outcome;
    stream_.expires_at(end_ - Clock::now() < idle_ ? end_ : Clock::now() + idle_);
    start([&outcome](error_code error, auto&&...) { outcome = error; });
    context_.restart();
    context_.run();
    return outcome;
  }

  const Clock::duration idle_;
  const Clock::time_point end_;
  const std::size_t answerSize_;
  asio::io_context context_{BOOST_ASIO_CONCURRENCY_HINT_UNSAFE};
  beast::tcp_stream stream_{context_};
  beast::flat_buffer buffer_{bufferSize};
  std::optional<beast::http::response_parser<beast::http::string_body>> parser_;
};

UrlError failure(const error_code& error) {
  if (error == beast::error::timeout)
    return {UrlError::timedOut};
  return {error == asio::error::connection_refused ? UrlError::cannotConnectToHost
                                                   : UrlError::unknown};
}

Result carry(const UrlRequest& request, std::uint16_t port, const TransferLimits& limits,
             const std::function<bool(std::uint16_t)>& mayProceed) {
  Transfer transfer(request, limits);
  if (const error_code error = transfer.connect(port))
    return failure(error);
  if (!mayProceed(transfer.ownPort()))
    return UrlError{};
  // Who refuses a long body answers before all of it was sent: other errors show in the answer.
  if (const error_code error = transfer.send(request); error == beast::error::timeout)
    return failure(error);
  if (const error_code error = transfer.receive())
    return failure(error);
  return transfer.response();
}

}  // namespace

Result transfer(const UrlRequest& request, std::uint16_t port, const TransferLimits& limits,
                const std::function<bool(std::uint16_t)>& mayProceed) {
  try {
    return carry(request, port, limits, mayProceed);
  } catch (const boost::system::system_error&) {
    return UrlError{};  // The process has no descriptor left, for one.
  }
}

}  // namespace tavin::http
