#include "platform/http/CurlTransfer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace tavin::http {

CurlTransfer::CurlTransfer(const UrlRequest& request, std::size_t maxAnswerSize,
                           std::function<bool(std::uint16_t)> mayProceed)
    : request_(request),
      maxAnswerSize_(maxAnswerSize),
      mayProceed_(std::move(mayProceed)),
      multi_(curl_multi_init()),
      easy_(curl_easy_init()) {}

void CurlTransfer::configure() {
  CURL* easy = easy_.get();
  curl_easy_setopt(easy, CURLOPT_URL, request_.url.toUtf8().constData());
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http");
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_PROXY, "");  // Also keeps the environment's proxy out.
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
  curl_easy_setopt(easy, CURLOPT_FRESH_CONNECT, 1L);
  curl_easy_setopt(easy, CURLOPT_FORBID_REUSE, 1L);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &CurlTransfer::onData);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy, CURLOPT_PREREQFUNCTION, &CurlTransfer::onConnected);
  curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
  for (const auto& [name, value] : request_.headers)
    headers_.reset(curl_slist_append(headers_.release(), (name + ": " + value).constData()));
  if (request_.method == "POST") {
    // Long bodies are sent at once, without first waiting to be asked for.
    headers_.reset(curl_slist_append(headers_.release(), "Expect:"));
    const QByteArray body = request_.body.value_or(QByteArray());
    curl_easy_setopt(easy, CURLOPT_POST, 1L);
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request_.body ? request_.body->constData() : "");
  }
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers_.get());
}

std::variant<UrlResponse, UrlError> CurlTransfer::run() {
  if (!multi_ || !easy_)
    return UrlError{};
  configure();
  curl_multi_add_handle(multi_.get(), easy_.get());
  std::variant<UrlResponse, UrlError> result = UrlError{UrlError::timedOut};
  while (true) {
    int running = 0;
    if (curl_multi_perform(multi_.get(), &running) != CURLM_OK || running == 0) {
      result = outcome();
      break;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(remaining());
    if (left.count() <= 0)
      break;
    const auto longest = std::numeric_limits<int>::max();
    const auto wait = std::min<std::int64_t>(left.count(), longest);
    curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(wait), nullptr);
  }
  curl_multi_remove_handle(multi_.get(), easy_.get());
  return result;
}

// Time until the request fails if nothing more happens.
CurlTransfer::Clock::duration CurlTransfer::remaining() {
  curl_off_t up = 0;
  curl_off_t down = 0;
  long head = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_UPLOAD_T, &up);
  curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_DOWNLOAD_T, &down);
  curl_easy_getinfo(easy_.get(), CURLINFO_HEADER_SIZE, &head);
  const auto now = Clock::now();
  if (up + down + head != bytesMoved_) {
    bytesMoved_ = up + down + head;
    lastProgress_ = now;
  }
  const auto seconds = [](double value) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(value));
  };
  auto end = lastProgress_ + seconds(request_.timeout);
  if (request_.deadline)
    end = std::min(end, start_ + seconds(*request_.deadline));
  return end - now;
}

std::variant<UrlResponse, UrlError> CurlTransfer::outcome() {
  int pending = 0;
  const CURLMsg* message = curl_multi_info_read(multi_.get(), &pending);
  if (!message || message->msg != CURLMSG_DONE)
    return UrlError{};
  if (message->data.result == CURLE_COULDNT_CONNECT)
    return UrlError{UrlError::cannotConnectToHost};
  if (message->data.result != CURLE_OK)
    return UrlError{};
  long status = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
  return UrlResponse{static_cast<int>(status), std::move(answer_)};
}

std::size_t CurlTransfer::onData(char* data, std::size_t size, std::size_t count, void* self) {
  auto* transfer = static_cast<CurlTransfer*>(self);
  const std::size_t length = size * count;
  if (length > transfer->maxAnswerSize_ - static_cast<std::size_t>(transfer->answer_.size()))
    return 0;  // Anything but `length` ends the transfer with an error.
  transfer->answer_.append(data, static_cast<qsizetype>(length));
  return length;
}

int CurlTransfer::onConnected(void* self, char*, char*, int, int localPort) {
  const bool may =
      static_cast<CurlTransfer*>(self)->mayProceed_(static_cast<std::uint16_t>(localPort));
  return may ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

}  // namespace tavin::http
