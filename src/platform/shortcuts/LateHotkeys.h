#pragma once

#include <functional>
#include <memory>
#include <set>

#include "platform/shortcuts/Service.h"

namespace tavin::shortcuts {

// The shortcuts of a desktop that is not there yet: what is added is pending, and goes to the right
// service once the desktop has told which that is. Main thread only.
class LateHotkeys final : public Service {
 public:
  using Arrived = std::function<void(std::unique_ptr<Service>)>;
  // Begins to wait for the desktop, and calls `arrived` once with its service, from the event loop.
  // What it returns is kept while this object lives, and ended with it.
  using Await = std::function<std::shared_ptr<void>(Arrived arrived)>;

  // `reason` says what is waited for.
  LateHotkeys(QString reason, const Await& await);

  bool canGrant() const override { return !service_ || service_->canGrant(); }
  Answer add(const KeyCombination& combination) override;
  void remove(const KeyCombination& combination) override;
  void release() override;

 private:
  void become(std::unique_ptr<Service> service);

  const QString reason_;
  std::set<KeyCombination> pending_;
  std::unique_ptr<Service> service_;  // Null until the desktop is there.
  const std::shared_ptr<void> wait_;
};

}  // namespace tavin::shortcuts
