#pragma once

#include <functional>
#include <set>

#include "platform/shortcuts/Service.h"

namespace tavin::test {

// What a desktop holds, and what it says.
struct DesktopState {
  std::set<shortcuts::KeyCombination> held;
  shortcuts::Answer answer = shortcuts::Answer::granted();
  bool released = false;
  std::function<void(const shortcuts::KeyCombination&)> press;
  std::function<void(const shortcuts::KeyCombination&, const shortcuts::Answer&)> tellAnswer;
};

// The service of such a desktop.
class FakeService final : public shortcuts::Service {
 public:
  explicit FakeService(DesktopState& desktop) : desktop_(desktop) {
    desktop_.press = [this](const auto& combination) { tellPress(combination); };
    desktop_.tellAnswer = [this](const auto& combination, const auto& answer) {
      tellAnswer(combination, answer);
    };
  }

  shortcuts::Answer add(const shortcuts::KeyCombination& combination) override {
    if (desktop_.answer.state != HotkeyState::refused)
      desktop_.held.insert(combination);
    return desktop_.answer;
  }
  void remove(const shortcuts::KeyCombination& combination) override {
    desktop_.held.erase(combination);
  }
  void release() override { desktop_.released = true; }

 private:
  DesktopState& desktop_;
};

}  // namespace tavin::test
