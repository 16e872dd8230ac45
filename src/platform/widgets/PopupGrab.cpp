#include "platform/widgets/PopupGrab.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace tavin::widgets {

namespace {
constexpr int retryMs = 20;
constexpr int giveUpMs = 3000;

bool grabbed(QWindow& window) {
  return window.setMouseGrabEnabled(true) && window.setKeyboardGrabEnabled(true);
}
}  // namespace

void holdInput(QWidget& popup) {
  if (grabbed(*popup.windowHandle()))
    return;
  auto* retry = new QTimer(&popup);
  QElapsedTimer waited;
  waited.start();
  QObject::connect(retry, &QTimer::timeout, &popup, [retry, waited, &popup] {
    const bool over = !popup.isVisible() || waited.elapsed() > giveUpMs;
    if (over || grabbed(*popup.windowHandle()))
      retry->deleteLater();
  });
  retry->start(retryMs);
}

}  // namespace tavin::widgets
