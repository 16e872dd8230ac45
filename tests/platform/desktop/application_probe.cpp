// The event loop in a process of its own, for tests that end it. Says each step on standard output.
//
//   application_probe wait          runs until it is asked to end
//   application_probe nested        ... inside an event loop in an event loop
//   application_probe launch        terminates while it is launching
//   application_probe quit          is asked by the desktop's session

#include <unistd.h>

#include <QCoreApplication>
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

class Probe final : public tavin::ApplicationDelegate {
 public:
  Probe(tavin::Application& application, std::string manner)
      : application_(application), manner_(std::move(manner)) {
    behaving_.setSingleShot(true);
    behaving_.callOnTimeout([this] { behave(); });
    running_.setSingleShot(true);
    running_.callOnTimeout([] { say("running"); });
  }

  void applicationDidFinishLaunching() override {
    say("launched");
    if (manner_ == "launch")
      application_.terminate();
    behaving_.start(0);
  }
  void applicationWillTerminate() override { say("terminating"); }

 private:
  void behave() {
    if (manner_ == "quit")
      QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
    // What runs next runs inside the loop below, where there is one.
    running_.start(50);
    if (manner_ == "nested")
      QEventLoop().exec();
  }

  tavin::Application& application_;
  std::string manner_;
  QTimer behaving_;
  QTimer running_;
};

}  // namespace

int main(int argc, char** argv) {
  alarm(60);  // No test leaves it behind.
  tavin::desktop::QtApplication application("probe");
  Probe probe(application, argc > 1 ? argv[1] : "wait");
  application.setDelegate(&probe);
  return application.run();
}
