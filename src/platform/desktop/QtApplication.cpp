#include "platform/desktop/QtApplication.h"

#include <QCoreApplication>
#include <QEvent>
#include <array>
#include <csignal>
#include <functional>
#include <string>
#include <utility>

#include "platform/Installation.h"
#include "platform/desktop/Catalogue.h"
#include "platform/desktop/SignalWatch.h"

namespace tavin::desktop {

// What QCoreApplication reads its options from, which it does not own.
struct QtApplication::Arguments {
  explicit Arguments(const char* program) : text(program), values{text.data(), nullptr} {}
  std::string text;
  std::array<char*, 2> values;
  int count = 1;
};

// Has the delegate say what is done when it is asked to quit.
class QtApplication::Instance final : private Arguments, public QCoreApplication {
 public:
  explicit Instance(const char* program)
      : Arguments(program), QCoreApplication(count, values.data()) {}

  std::function<void()> quitRequested;

  bool event(QEvent* event) override {
    if (event->type() != QEvent::Quit)
      return QCoreApplication::event(event);
    quitRequested();
    return true;
  }
};

QtApplication::QtApplication(const char* program) : instance_(std::make_unique<Instance>(program)) {
  instance_->quitRequested = [this] { terminate(); };
  installCatalogue(messageLanguages());
  QCoreApplication::setApplicationName(QStringLiteral("tavin"));
  QCoreApplication::setApplicationVersion(QLatin1String(version));
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
  QCoreApplication::exit(0);
}

}  // namespace tavin::desktop
