#pragma once

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/UrlSession.h"

namespace tavin::http {

// One request on a connection of its own. Runs in the calling thread.
class CurlTransfer {
 public:
  // `mayProceed` is asked once, between connecting and the first byte, with our end's port.
  CurlTransfer(const UrlRequest& request, std::size_t maxAnswerSize,
               std::function<bool(std::uint16_t)> mayProceed);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  std::variant<UrlResponse, UrlError> run();

 private:
  using Clock = std::chrono::steady_clock;

  void configure();
  Clock::duration remaining();
  std::variant<UrlResponse, UrlError> outcome();

  static std::size_t onData(char* data, std::size_t size, std::size_t count, void* self);
  static int onConnected(void* self, char*, char*, int, int);

  template <auto release>
  struct Release {
    template <typename T>
    void operator()(T* handle) const {
      release(handle);
    }
  };

  const UrlRequest& request_;
  const std::size_t maxAnswerSize_;
  const std::function<bool(std::uint16_t)> mayProceed_;
  QByteArray answer_;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point lastProgress_ = start_;
  curl_off_t bytesMoved_ = 0;
  // The transfer is taken off the multi handle before either is released.
  std::unique_ptr<curl_slist, Release<curl_slist_free_all>> headers_;
  std::unique_ptr<CURLM, Release<curl_multi_cleanup>> multi_;
  std::unique_ptr<CURL, Release<curl_easy_cleanup>> easy_;
};

}  // namespace tavin::http
