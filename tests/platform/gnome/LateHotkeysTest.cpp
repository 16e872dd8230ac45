#include <gmock/gmock.h>

#include <QStringList>
#include <memory>

#include "FakeShell.h"
#include "platform/Eventually.h"
#include "platform/LateHotkeys.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Key final : EventHotKey {};

// What the tests hear of the service that is chosen in the end.
struct Chosen {
  QStringList versions;
  std::vector<EventHotKeyRef> keys;
  bool grants = true;
  bool released = false;
  std::function<void(EventHotKeyID)> press;
  std::function<void(const HotkeyRegistration&)> answer;
};

class Service final : public HotkeyService {
 public:
  explicit Service(Chosen& chosen) : chosen_(chosen) {}
  std::int32_t installEventHandler(std::function<void(EventHotKeyID)> callback) override {
    chosen_.press = std::move(callback);
    return 0;
  }
  void installAnswerHandler(std::function<void(const HotkeyRegistration&)> callback) override {
    chosen_.answer = std::move(callback);
  }
  HotkeyRegistration registerEventHotKey(std::uint32_t, std::uint32_t, EventHotKeyID) override {
    if (!chosen_.grants)
      return HotkeyRegistration::refused("held");
    chosen_.keys.push_back(std::make_shared<Key>());
    return HotkeyRegistration::granted(chosen_.keys.back());
  }
  void unregisterEventHotKey(const EventHotKeyRef& ref) override { std::erase(chosen_.keys, ref); }

 private:
  Chosen& chosen_;
};

class LateHotkeysTest : public ::testing::Test {
 protected:
  void SetUp() override {
    late.installEventHandler([this](EventHotKeyID id) { pressed.push_back(id.id); });
    late.installAnswerHandler(
        [this](const HotkeyRegistration& answer) { answers.push_back(answer); });
  }
  HotkeyRegistration add(std::uint32_t id) {
    return late.registerEventHotKey(HotkeyKeys::escape, HotkeyModifiers::optionKey,
                                    {.signature = 1, .id = id});
  }
  void shellTells(const QString& version) {
    ASSERT_TRUE(eventually([&] { return shell.questions() > 0; }));
    shell.tellVersion(version);
  }

  FakeShell shell;
  Chosen chosen;
  std::vector<std::uint32_t> pressed;
  std::vector<HotkeyRegistration> answers;
  LateHotkeys late{"not yet", [this](const QString& version) {
                     chosen.versions << version;
                     return ChosenHotkeys{.service = std::make_unique<Service>(chosen),
                                          .release = [this] { chosen.released = true; }};
                   }};
};

TEST_F(LateHotkeysTest, WhatIsRegisteredBeforeTheShellComesIsGrantedThen) {
  const HotkeyRegistration refused = add(7);
  EXPECT_NE(refused.status, 0);
  EXPECT_EQ(refused.reason, "not yet");
  ASSERT_NE(refused.ref, nullptr);
  shell.start();
  shellTells("43.9");
  ASSERT_TRUE(eventually([&] { return answers.size() == 1; }));
  EXPECT_EQ(answers[0].status, 0);
  EXPECT_EQ(answers[0].ref, refused.ref);
  EXPECT_EQ(chosen.versions, QStringList{"43.9"});
  chosen.press({.signature = 1, .id = 7});
  EXPECT_THAT(pressed, ElementsAre(7));
}

TEST_F(LateHotkeysTest, AShellThatComesAnewIsAskedNoMore) {
  shell.start();
  shellTells("48.4");
  ASSERT_TRUE(eventually([&] { return chosen.versions.size() == 1; }));
  shell.stop();
  shell.start();
  EXPECT_FALSE(eventually([&] { return shell.questions() > 0; }, 200));
}

TEST_F(LateHotkeysTest, WhatIsRegisteredLaterIsAnsweredAtOnceAndCanBeGivenBack) {
  shell.start();
  shellTells("43.9");
  ASSERT_TRUE(eventually([&] { return chosen.versions.size() == 1; }));
  const HotkeyRegistration granted = add(1);
  EXPECT_EQ(granted.status, 0);
  EXPECT_THAT(answers, IsEmpty());
  late.unregisterEventHotKey(granted.ref);
  EXPECT_THAT(chosen.keys, IsEmpty());
}

TEST_F(LateHotkeysTest, WhatWasGivenBackBeforeTheShellCameIsNotRegistered) {
  late.unregisterEventHotKey(add(1).ref);
  shell.start();
  shellTells("43.9");
  ASSERT_TRUE(eventually([&] { return chosen.versions.size() == 1; }));
  EXPECT_THAT(chosen.keys, IsEmpty());
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(LateHotkeysTest, ARefusalAndALaterAnswerAreTold) {
  chosen.grants = false;
  const HotkeyRegistration first = add(1);
  shell.start();
  shellTells("43.9");
  ASSERT_TRUE(eventually([&] { return answers.size() == 1; }));
  EXPECT_EQ(answers[0].reason, "held");
  EXPECT_EQ(answers[0].ref, first.ref);
  chosen.grants = true;
  const HotkeyRegistration second = add(2);
  chosen.answer(HotkeyRegistration::refused("gone", chosen.keys[0]));
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[1].reason, "gone");
  EXPECT_EQ(answers[1].ref, second.ref);
}

TEST_F(LateHotkeysTest, OwesWhatTheServiceOwes) {
  late.release();
  EXPECT_FALSE(chosen.released);
  shell.start();
  shellTells("43.9");
  ASSERT_TRUE(eventually([&] { return chosen.versions.size() == 1; }));
  late.release();
  EXPECT_TRUE(chosen.released);
}

}  // namespace
}  // namespace tavin::test
