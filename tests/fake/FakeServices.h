#pragma once

#include <deque>
#include <map>
#include <set>
#include <utility>

#include "fake/Journal.h"
#include "platform/AlertPresenter.h"
#include "platform/Application.h"
#include "platform/HotkeyService.h"
#include "platform/LoginItem.h"
#include "platform/ProcessLauncher.h"
#include "platform/RemoteActions.h"
#include "platform/StatusItem.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace tavin::test {

class FakeLog final : public SystemLog {
 public:
  void write(const QString& line) override { lines.push_back(line.toStdString()); }
  std::vector<std::string> lines;
};

class FakeApplication final : public Application {
 public:
  explicit FakeApplication(Journal& journal) : journal_(journal) {}
  void setDelegate(ApplicationDelegate*) override {}
  int run() override { return 0; }
  void terminate() override { journal_.add(QStringLiteral("terminate")); }

 private:
  Journal& journal_;
};

class FakeStatusItem final : public StatusItem {
 public:
  explicit FakeStatusItem(Journal& journal) : journal_(journal) {}
  void setImage(const QString& symbol, const QString& description) override {
    journal_.add(QStringLiteral("icon ") + symbol + QStringLiteral(" (") + description +
                 QLatin1Char(')'));
  }
  void setMenu(Menu* menu) override {
    journal_.add(QStringLiteral("setMenu"));
    attached = menu;
  }
  void popUpMenu() override { journal_.add(QStringLiteral("popUpMenu")); }
  Menu* attached = nullptr;

 private:
  Journal& journal_;
};

// Keeps alerts open until the test answers them.
class FakeAlerts final : public AlertPresenter {
 public:
  explicit FakeAlerts(Journal& journal) : journal_(journal) {}
  void activateIgnoringOtherApps() override { journal_.add(QStringLiteral("activate")); }
  void runModal(const Alert& alert, std::function<void(AlertResponse)> completion) override {
    journal_.add(QStringLiteral("alert ") + alert.messageText);
    shown.push_back(alert);
    completions.push_back(std::move(completion));
  }
  // Answers the oldest alert that is open.
  void answer(AlertResponse response) {
    const auto completion = std::move(completions.front());
    completions.pop_front();
    completion(std::move(response));
  }
  std::vector<Alert> shown;
  std::deque<std::function<void(AlertResponse)>> completions;

 private:
  Journal& journal_;
};

class FakeWorkspace final : public Workspace {
 public:
  explicit FakeWorkspace(Journal& journal) : journal_(journal) {}
  QByteArray desktop() override { return name; }
  void openFile(const QString& path) override { journal_.add(QStringLiteral("open ") + path); }
  bool hasAccessibilitySettings() override { return hasSettings; }
  void openAccessibilitySettings() override { journal_.add(QStringLiteral("open settings")); }
  void beep() override { journal_.add(QStringLiteral("beep")); }
  bool hasSettings = true;
  QByteArray name;

 private:
  Journal& journal_;
};

class FakeLoginItem final : public LoginItem {
 public:
  explicit FakeLoginItem(Journal& journal) : journal_(journal) {}
  LoginItemStatus status() override { return current; }
  std::optional<QString> registerItem() override {
    journal_.add(QStringLiteral("register login item"));
    return failure;
  }
  std::optional<QString> unregisterItem() override {
    journal_.add(QStringLiteral("unregister login item"));
    return failure;
  }
  LoginItemStatus current = LoginItemStatus::notRegistered;
  std::optional<QString> failure;

 private:
  Journal& journal_;
};

class FakeUserDefaults final : public UserDefaults {
 public:
  explicit FakeUserDefaults(Journal& journal) : journal_(journal) {}
  std::optional<QString> string(const QString& key) override {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  void setString(const QString& key, const QString& value) override {
    journal_.add(QStringLiteral("store ") + key + QLatin1Char('=') + value);
    values[key] = value;
  }
  std::map<QString, QString> values;

 private:
  Journal& journal_;
};

class FakeHotkeyService final : public HotkeyService {
 public:
  struct Key final : EventHotKey {
    EventHotKeyID id;
  };

  explicit FakeHotkeyService(Journal& journal) : journal_(journal) {}
  bool canGrant() const override { return grants; }
  std::int32_t installEventHandler(std::function<void(EventHotKeyID)> handler) override {
    journal_.add(QStringLiteral("install hotkey handler"));
    callback = std::move(handler);
    return installStatus;
  }
  HotkeyRegistration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                         EventHotKeyID id) override {
    journal_.add(QStringLiteral("grab %1+%2 id %3").arg(keyCode).arg(modifiers).arg(id.id));
    signatures.push_back(id.signature);
    if (pending.contains({keyCode, modifiers})) {
      auto key = std::make_shared<Key>();
      key->id = id;
      asked.push_back(key);
      return {.state = HotkeyState::pending, .status = -1, .ref = key, .reason = reason};
    }
    const auto refused = refusals.find({keyCode, modifiers});
    if (refused != refusals.end())
      return {.state = refused->second == 0 ? HotkeyState::granted : HotkeyState::refused,
              .status = refused->second,
              .ref = nullptr,
              .reason = reason};
    auto key = std::make_shared<Key>();
    key->id = id;
    return {.state = HotkeyState::granted, .status = 0, .ref = key, .reason = {}};
  }
  void unregisterEventHotKey(const EventHotKeyRef& ref) override {
    journal_.add(QStringLiteral("ungrab id %1").arg(static_cast<Key&>(*ref).id.id));
  }

  void installAnswerHandler(std::function<void(const HotkeyRegistration&)> handler) override {
    answered = std::move(handler);
  }

  // The desktop answers neither of these before the test calls `answer`.
  void answerLater(std::uint32_t keyCode, std::uint32_t modifiers) {
    pending.insert({keyCode, modifiers});
  }
  // Answers the request that was made as the `index`th of those.
  void answer(std::size_t index, std::int32_t status) {
    answered({.state = status == 0 ? HotkeyState::granted : HotkeyState::refused,
              .status = status,
              .ref = asked.at(index),
              .reason = reason});
  }
  void refuse(std::uint32_t keyCode, std::uint32_t modifiers, std::int32_t status) {
    refusals[{keyCode, modifiers}] = status;
  }
  void press(std::uint32_t id) { callback({.signature = 0x5441564E, .id = id}); }

  std::function<void(EventHotKeyID)> callback;
  std::int32_t installStatus = 0;
  bool grants = true;
  std::map<std::pair<std::uint32_t, std::uint32_t>, std::int32_t> refusals;
  std::function<void(const HotkeyRegistration&)> answered;
  std::set<std::pair<std::uint32_t, std::uint32_t>> pending;
  std::vector<EventHotKeyRef> asked;
  std::vector<std::uint32_t> signatures;
  QString reason;

 private:
  Journal& journal_;
};

class FakeProcessLauncher final : public ProcessLauncher {
 public:
  struct Child final : ChildProcess {
    explicit Child(Journal& journalOf) : journal(journalOf) {}
    void terminate() override { journal.add(QStringLiteral("terminate engine")); }
    void kill() override { journal.add(QStringLiteral("kill engine")); }
    Journal& journal;
  };

  explicit FakeProcessLauncher(Journal& journal) : journal_(journal) {}
  std::variant<std::shared_ptr<ChildProcess>, LaunchError> launch(
      const ProcessDescription& description, std::function<void()> exited) override {
    journal_.add(QStringLiteral("launch ") + description.executable);
    launched.push_back(description);
    if (failure)
      return LaunchError{*failure};
    onExit.push_back(std::move(exited));
    return std::make_shared<Child>(journal_);
  }

  std::vector<ProcessDescription> launched;
  std::vector<std::function<void()>> onExit;
  std::optional<QString> failure;

 private:
  Journal& journal_;
};

class FakeRemoteControl final : public RemoteControl {
 public:
  void serve(RemoteActions given) override { actions = std::move(given); }
  RemoteActions actions;
};

}  // namespace tavin::test
