#pragma once

#include <memory>

#include "platform/Application.h"

namespace tavin::desktop {

class SignalWatch;

// The event loop on QCoreApplication, which it owns. Made on the main thread. A broken pipe ends a
// write, not the program.
class QtApplication final : public Application {
 public:
  // `program` is the name it was started by.
  explicit QtApplication(const char* program);
  ~QtApplication() override;

  void setDelegate(ApplicationDelegate* delegate) override;
  int run() override;
  void terminate() override;

 private:
  struct Arguments;
  class Instance;

  std::unique_ptr<Instance> instance_;
  std::unique_ptr<SignalWatch> signals_;
  ApplicationDelegate* delegate_ = nullptr;
  bool terminated_ = false;
};

}  // namespace tavin::desktop
