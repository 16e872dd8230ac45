#include "engine/EngineClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>
#include <QUrlQuery>
#include <cmath>
#include <utility>

namespace tavin {
namespace {

constexpr double startupStatusTimeout = 0.5;
constexpr double voicesTimeout = 20;
constexpr double postTimeout = 60;

bool isSerialisable(const QJsonValue& value);

template <typename Container>
bool allSerialisable(const Container& values) {
  for (const auto& value : values)
    if (!isSerialisable(value))
      return false;
  return true;
}

// JSON has no numbers beyond the finite ones; the encoder would write null in their place.
bool isSerialisable(const QJsonValue& value) {
  if (value.isObject())
    return allSerialisable(value.toObject());
  if (value.isArray())
    return allSerialisable(value.toArray());
  return !value.isDouble() || std::isfinite(value.toDouble());
}

std::optional<QByteArray> serialise(const QJsonObject& object) {
  if (!isSerialisable(object))
    return std::nullopt;
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

}  // namespace

EngineClient::EngineClient(Services services)
    : session_(services.session),
      supervisor_(std::make_shared<EngineSupervisor>(services.process)),
      base_(QStringLiteral("http://127.0.0.1:%1").arg(port)) {}

UrlRequest EngineClient::request(const QString& path) const {
  UrlRequest request;
  request.url = base_ + QLatin1Char('/') + path;
  return request;
}

std::variant<QByteArray, UrlError> EngineClient::sync(const UrlRequest& request) {
  auto result = session_.dataTask(request);
  if (const auto* error = std::get_if<UrlError>(&result)) {
    if (error->code == UrlError::cannotConnectToHost)
      supervisor_->noteUnreachable();
    return *error;
  }
  auto& response = std::get<UrlResponse>(result);
  if (response.statusCode != 200 || !response.body)
    return UrlError{UrlError::badServerResponse};
  return std::move(*response.body);
}

std::optional<EngineStatus> EngineClient::status(double timeout, TimeLimit limit) {
  UrlRequest get = request(QStringLiteral("status"));
  get.timeout = timeout;
  if (limit == TimeLimit::total)
    get.deadline = timeout;
  const auto result = sync(get);
  const auto* body = std::get_if<QByteArray>(&result);
  return body ? EngineStatus::decode(*body) : std::nullopt;
}

std::vector<Voice> EngineClient::voices(const QString& engine) {
  UrlRequest get = request(QStringLiteral("voices"));
  get.url += QStringLiteral("?engine=") + QString::fromLatin1(QUrl::toPercentEncoding(engine));
  get.timeout = voicesTimeout;
  const auto result = sync(get);
  const auto* body = std::get_if<QByteArray>(&result);
  return body ? Voice::decodeList(*body).value_or(std::vector<Voice>()) : std::vector<Voice>();
}

std::optional<QJsonObject> EngineClient::post(const QString& path, const QJsonObject& body) {
  UrlRequest post = request(path);
  post.method = "POST";
  post.headers = {{"Content-Type", "application/json"}, {"X-Tavin", "1"}};
  post.body = serialise(body);
  post.timeout = postTimeout;
  const auto result = sync(post);
  const auto* reply = std::get_if<QByteArray>(&result);
  if (!reply)
    return std::nullopt;
  const QJsonDocument document = QJsonDocument::fromJson(*reply);
  return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

void EngineClient::startIfNeeded() {
  if (status(startupStatusTimeout, TimeLimit::total))
    supervisor_->noteFound();
  else
    supervisor_->launch();
}

}  // namespace tavin
