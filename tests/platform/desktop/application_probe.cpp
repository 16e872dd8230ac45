// The event loop in a process of its own, for tests that end it. Says each step on standard output.
//
//   application_probe wait          runs until it is asked to end
//   application_probe nested        ... inside an event loop in an event loop
//   application_probe dialog        ... behind a dialog that refuses to close
//   application_probe window        closes its last window and goes on
//   application_probe launch        terminates while it is launching
//   application_probe quit          is asked by the desktop's session

#include <unistd.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>
#include <string>

#include "platform/desktop/QtApplication.h"

namespace {

void say(const char* text) {
  std::puts(text);
  std::fflush(stdout);
}

class StubbornDialog : public QDialog {
 public:
  void closeEvent(QCloseEvent* event) override { event->ignore(); }
  void reject() override {}
};

class Probe final : public tavin::ApplicationDelegate {
 public:
  Probe(tavin::Application& application, std::string manner)
      : application_(application), manner_(std::move(manner)) {}

  void applicationDidFinishLaunching() override {
    say("launched");
    if (manner_ == "launch")
      application_.terminate();
    QTimer::singleShot(0, QCoreApplication::instance(), [this] { behave(); });
  }
  void applicationWillTerminate() override { say("terminating"); }

 private:
  void behave() {
    if (manner_ == "window") {
      QWidget window;
      window.show();
      window.close();
    }
    if (manner_ == "quit")
      QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
    // What runs next runs inside the loop below, where there is one.
    QTimer::singleShot(50, QCoreApplication::instance(), [] { say("running"); });
    if (manner_ == "nested")
      QEventLoop().exec();
    if (manner_ == "dialog")
      StubbornDialog().exec();
  }

  tavin::Application& application_;
  std::string manner_;
};

}  // namespace

int main(int argc, char** argv) {
  alarm(60);  // No test leaves it behind.
  tavin::desktop::QtApplication application("probe", "offscreen");
  Probe probe(application, argc > 1 ? argv[1] : "wait");
  application.setDelegate(&probe);
  return application.run();
}
