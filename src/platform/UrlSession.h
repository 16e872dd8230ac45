#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace tavin {

// A request to the engine on the loopback interface.
struct UrlRequest {
  QString url;
  QByteArray method = "GET";
  std::vector<std::pair<QByteArray, QByteArray>> headers;
  std::optional<QByteArray> body;
  double timeout = 60;  // Seconds without any data after which the request fails.
  // Seconds after which it fails however much data comes; none leaves only the idle limit.
  std::optional<double> deadline;
};

// A complete answer, whatever its status.
struct UrlResponse {
  int statusCode = 0;
  std::optional<QByteArray> body;  // An empty body counts as present.
};

struct UrlError {
  static constexpr int unknown = -1;
  static constexpr int timedOut = -1001;
  static constexpr int cannotConnectToHost = -1004;
  static constexpr int badServerResponse = -1011;
  int code = unknown;
};

// Carries requests. Any thread may call; the call blocks its own thread until the answer is there
// or has failed.
class UrlSession {
 public:
  virtual ~UrlSession() = default;
  virtual std::variant<UrlResponse, UrlError> dataTask(const UrlRequest& request) = 0;
};

}  // namespace tavin
