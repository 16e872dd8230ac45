#include "platform/shortcuts/LateHotkeys.h"

#include <utility>

namespace tavin::shortcuts {

LateHotkeys::LateHotkeys(QString reason, const Await& await)
    : reason_(std::move(reason)),
      wait_(await([this](std::unique_ptr<Service> service) { become(std::move(service)); })) {}

void LateHotkeys::become(std::unique_ptr<Service> service) {
  service_ = std::move(service);
  service_->tell([this](const KeyCombination& combination) { tellPress(combination); },
                 [this](const KeyCombination& combination, const Answer& answer) {
                   tellAnswer(combination, answer);
                 });
  for (const KeyCombination& combination : std::exchange(pending_, {}))
    tellAnswer(combination, service_->add(combination));
}

Answer LateHotkeys::add(const KeyCombination& combination) {
  if (service_)
    return service_->add(combination);
  pending_.insert(combination);
  return Answer::pending(reason_);
}

void LateHotkeys::remove(const KeyCombination& combination) {
  pending_.erase(combination);
  if (service_)
    service_->remove(combination);
}

void LateHotkeys::release() {
  if (service_)
    service_->release();
}

}  // namespace tavin::shortcuts
