#pragma once

#include <memory>

#include "platform/MainQueue.h"

namespace tavin::desktop {

// The main queue on Qt's event loop. Made and destroyed on the main thread; what has not run by
// then is dropped. Tasks wait under a lock of the standard library, so that the thread sanitizer
// sees every hand-over; Qt only carries the wake-ups.
class QtMainQueue final : public MainQueue {
 public:
  QtMainQueue();
  ~QtMainQueue() override;

  void async(std::function<void()> task) override;
  void asyncAfter(double seconds, std::function<void()> task) override;
  std::shared_ptr<Timer> scheduledTimer(
      double seconds, std::function<void(const std::shared_ptr<Timer>&)> block) override;

 private:
  class Receiver;
  std::unique_ptr<Receiver> receiver_;
};

}  // namespace tavin::desktop
