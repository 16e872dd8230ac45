// The speech commands of the controller: what a press of a shortcut does, and the watcher that
// keeps the icon active while the engine speaks.
#include <QCoreApplication>
#include <QJsonObject>

#include "app/AppDelegate.h"
#include "engine/EngineClient.h"
#include "platform/Platform.h"

namespace tavin {
namespace {

constexpr double watchInterval = 0.75;
// Shorter than the interval, so that a poll has normally finished before the next tick.
constexpr double watchStatusTimeout = 0.5;

// Why the local back-end cannot speak yet, or none when it can, or when another one is chosen.
std::optional<Words> whyNotReady(const EngineStatus& status) {
  if (status.engine != QStringLiteral("kokoro") || status.ready)
    return std::nullopt;
  if (status.download)
    return words(
        "Alert",
        QT_TRANSLATE_NOOP("Alert", "Tavin is downloading its voices (%1%). This happens once."),
        {QString::number(status.downloadPercent())});
  if (status.setupError)
    return words("Alert", QT_TRANSLATE_NOOP("Alert", "Voice setup failed: %1"),
                 {status.setupErrorMessage.words()});
  return words(
      "Alert",
      QT_TRANSLATE_NOOP("Alert", "Tavin is still loading its voices. Try again in a few seconds."));
}

}  // namespace

void AppDelegate::onMain(std::function<void()> step) {
  platform_.mainQueue->async([self = shared_from_this(), step = std::move(step)] { step(); });
}

void AppDelegate::onWork(std::function<void()> step) {
  work_->async([self = shared_from_this(), step = std::move(step)] { step(); });
}

void AppDelegate::speakOrStop() {
  onWork([this] {
    const auto status = engine_->status();
    if (!status || !status->isActive()) {
      speakSelection();
      return;
    }
    engine_->post(QStringLiteral("stop"));
    onMain([this] { setIcon(false); });
  });
}

void AppDelegate::speakSelection() {
  onWork([this] { speakSelectionNow(); });
}

void AppDelegate::speakSelectionNow() {
  if (const auto status = engine_->status()) {
    if (const auto message = whyNotReady(*status)) {
      onMain([this, message] { showError(*message); });
      return;
    }
  }
  if (!selection_.isTrusted(false)) {
    onMain([this] { showAccessibilityHelp(); });
    return;
  }
  if (const auto text = selection_.current())
    postSpeech(*text);
  else
    platform_.workspace->beep();
}

void AppDelegate::postSpeech(const QString& text) {
  engine_->post(QStringLiteral("speak"), {{QStringLiteral("text"), text}});
  onMain([this] {
    setIcon(true);
    watchPlayback();
  });
}

void AppDelegate::watchPlayback() {
  if (iconTimer_)
    iconTimer_->invalidate();
  iconTimer_ = platform_.mainQueue->scheduledTimer(
      watchInterval, [weak = weak_from_this()](const std::shared_ptr<Timer>& timer) {
        if (const auto self = weak.lock())
          self->pollPlayback(timer);
        else
          timer->invalidate();
      });
}

void AppDelegate::pollPlayback(const std::shared_ptr<Timer>& timer) {
  // An error is answered before the next is looked for: an absent user finds one, not hundreds.
  if (errorIsShown_)
    return;
  onWork([this, timer] {
    const auto status = engine_->status(watchStatusTimeout);
    onMain([this, status, timer] { evaluatePlayback(status, timer); });
  });
}

void AppDelegate::evaluatePlayback(const std::optional<EngineStatus>& status,
                                   const std::shared_ptr<Timer>& timer) {
  if (errorIsShown_)  // This poll was under way when the one before it found the error.
    return;
  // First, because an engine can report an error and go on speaking.
  if (!status || !status->error)
    return showPlayback(status, *timer);
  errorIsShown_ = true;
  showError(status->errorMessage.words(), [weak = weak_from_this(), status, timer] {
    if (const auto self = weak.lock()) {
      self->errorIsShown_ = false;
      self->showPlayback(status, *timer);
    }
  });
}

// Stops the timer whose tick this is. A newer watch may have replaced it: the icon turns idle all
// the same, and the newer timer goes on.
void AppDelegate::showPlayback(const std::optional<EngineStatus>& status, Timer& timer) {
  if (status && status->isActive())
    return;
  timer.invalidate();
  setIcon(false);
}

void AppDelegate::stop() {
  onWork([this] {
    engine_->post(QStringLiteral("stop"));
    onMain([this] { setIcon(false); });
  });
}

void AppDelegate::togglePause() { askForText("toggle-pause", {}); }

void AppDelegate::askForText(const char* request, const QJsonObject& body) {
  onWork([this, request, body] { engine_->post(QLatin1String(request), body); });
}

}  // namespace tavin
