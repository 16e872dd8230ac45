#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <map>

#include "fake/Journal.h"
#include "platform/UrlSession.h"

namespace tavin::test {

// An engine that answers what the test says, and an URL session to reach it.
class FakeEngine final : public UrlSession {
 public:
  explicit FakeEngine(Journal& journal) : journal_(journal) {}

  std::variant<UrlResponse, UrlError> dataTask(const UrlRequest& request) override {
    requests.push_back(request);
    journal_.add(describe(request));
    if (!reachable)
      return UrlError{UrlError::cannotConnectToHost};
    const QString path = request.url.section(QLatin1Char('/'), 3).section(QLatin1Char('?'), 0, 0);
    if (const auto answer = answers.find(path); answer != answers.end())
      return answer->second;
    if (path == QStringLiteral("status"))
      return UrlResponse{200, QJsonDocument(status).toJson()};
    return UrlResponse{200, QByteArray(path == QStringLiteral("voices") ? "[]" : "{}")};
  }

  void answerWith(const QString& path, int code, std::optional<QByteArray> body) {
    answers[path] = UrlResponse{code, std::move(body)};
  }

  static QJsonObject idleStatus() {
    return {{"state", "idle"},
            {"chars", 0},
            {"engine", "espeak"},
            {"voice", "en-gb"},
            {"speed", 1.0},
            {"ready", true},
            {"engines",
             QJsonArray{info("espeak", "eSpeak NG", true), info("openai", "OpenAI", false)}}};
  }
  static QJsonObject info(const QString& name, const QString& label, bool available) {
    return {{"name", name}, {"label", label}, {"available", available}};
  }

  QJsonObject status = idleStatus();
  bool reachable = true;
  std::map<QString, UrlResponse> answers;  // By path; they replace the ordinary ones.
  std::vector<UrlRequest> requests;

 private:
  static QString describe(const UrlRequest& request) {
    QString text = QString::fromLatin1(request.method) + QLatin1Char(' ') +
                   request.url.section(QLatin1Char('/'), 3);
    if (request.method == "GET")
      return text + QStringLiteral(" %1s").arg(request.timeout);
    return text + QLatin1Char(' ') + QString::fromUtf8(request.body.value_or("no body"));
  }

  Journal& journal_;
};

}  // namespace tavin::test
