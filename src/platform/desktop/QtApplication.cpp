#include "platform/desktop/QtApplication.h"

#include <QApplication>
#include <QEvent>
#include <QSessionManager>
#include <array>
#include <csignal>
#include <functional>
#include <string>
#include <utility>

#include "platform/Installation.h"
#include "platform/desktop/Catalogue.h"
#include "platform/desktop/SignalWatch.h"

namespace tavin::desktop {

// What QApplication reads its options from, which it does not own.
struct QtApplication::Arguments {
  Arguments(const char* program, const char* qtPlatform)
      : texts{program, "-platform", qtPlatform},
        values{texts[0].data(), texts[1].data(), texts[2].data(), nullptr} {}
  std::array<std::string, 3> texts;
  std::array<char*, 4> values;
  int count = 3;
};

// Ends at once when asked to quit, where Qt would first ask every open window and let one refuse.
class QtApplication::Instance final : private Arguments, public QApplication {
 public:
  Instance(const char* program, const char* qtPlatform)
      : Arguments(program, qtPlatform), QApplication(count, values.data()) {}

  std::function<void()> quitRequested;

  bool event(QEvent* event) override {
    if (event->type() != QEvent::Quit)
      return QApplication::event(event);
    quitRequested();
    return true;
  }
};

QtApplication::QtApplication(const char* program, const char* qtPlatform)
    : instance_(std::make_unique<Instance>(program, qtPlatform)) {
  instance_->quitRequested = [this] { terminate(); };
  installCatalogue(messageLanguages());
  QCoreApplication::setApplicationName(QStringLiteral("tavin"));
  QCoreApplication::setApplicationVersion(QLatin1String(version));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavin"));
  QGuiApplication::setDesktopFileName(QStringLiteral("app.tavin.Tavin"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  // KDE's tray icons hold such a lock: the end of one, when the panel comes, would end Tavin.
  QCoreApplication::setQuitLockEnabled(false);
  // The login item starts the program; a session manager that restored it would start a second.
  const auto neverRestart = [](QSessionManager& session) {
    session.setRestartHint(QSessionManager::RestartNever);
  };
  QObject::connect(instance_.get(), &QGuiApplication::commitDataRequest, instance_.get(),
                   neverRestart, Qt::DirectConnection);
  QObject::connect(instance_.get(), &QGuiApplication::saveStateRequest, instance_.get(),
                   neverRestart, Qt::DirectConnection);
  signals_ = std::make_unique<SignalWatch>([this] { terminate(); });
}

QtApplication::~QtApplication() = default;

void QtApplication::setDelegate(ApplicationDelegate* delegate) { delegate_ = delegate; }

int QtApplication::run() {
  if (delegate_ != nullptr)
    delegate_->applicationDidFinishLaunching();
  if (!terminated_)
    QCoreApplication::exec();
  if (delegate_ != nullptr)
    delegate_->applicationWillTerminate();
  return 0;
}

void QtApplication::terminate() {
  terminated_ = true;
  QCoreApplication::exit(0);  // Leaves nested event loops too.
}

}  // namespace tavin::desktop
