#include "TestApplication.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <memory>

namespace tavin::test {

namespace {

// A QApplication that lives as long as the tests run.
class ApplicationEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    application_ = std::make_unique<QApplication>(argc_, argv_);
    QApplication::setQuitOnLastWindowClosed(false);
  }
  void TearDown() override { application_.reset(); }

 private:
  int argc_ = 1;
  char name_[11] = "tray_test";
  char* argv_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> application_;
};

const auto* const environment =
    ::testing::AddGlobalTestEnvironment(std::make_unique<ApplicationEnvironment>().release());

}  // namespace

bool waitFor(const std::function<bool()>& condition) {
  QElapsedTimer waited;
  waited.start();
  while (!condition()) {
    if (waited.elapsed() > 5000)
      return false;
    runEvents();
  }
  return true;
}

void runEvents() {
  QEventLoop loop;  // Objects that are to be deleted later go only in a loop of its own.
  QTimer timer;
  timer.callOnTimeout(&loop, &QEventLoop::quit);
  timer.start(10);
  loop.exec();
}

}  // namespace tavin::test
