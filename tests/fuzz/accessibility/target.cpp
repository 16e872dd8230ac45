// Programs that answer anything when they are asked what is selected in them.

#include <QCoreApplication>

#include "bus/FakeBus.h"
#include "platform/bus/SessionBus.h"
#include "platform/capture/AtspiAccessibility.h"

using namespace tavin;

namespace {

class Log final : public SystemLog {
 public:
  void write(const QString&) override {}
};

// In front stands what the input says.
class Windows final : public windows::WindowSystem {
 public:
  explicit Windows(const windows::FrontWindow& front) : front_(front) {}
  windows::FrontWindow frontWindow() override { return front_; }
  std::set<std::int64_t> windowProcesses() override { return {front_.processId}; }
  std::optional<QString> primaryText(const windows::FrontWindow&, PrimaryProof, Deadline) override {
    return std::nullopt;
  }

 private:
  const windows::FrontWindow& front_;
};

windows::FrontWindow anyWindow(FuzzedDataProvider& input) {
  windows::FrontWindow front;
  front.id = input.ConsumeIntegralInRange(0U, 3U);
  front.processId = input.ConsumeIntegralInRange(0, 3);
  front.browser = input.ConsumeBool();
  front.unknown = input.ConsumeBool();
  front.withoutCopyKey = input.ConsumeBool();
  return front;
}

const fuzz::FakeBus::Answers answers{{"GetAddress", "s"},      {"Get", "v"},
                                     {"GetAll", "a{sv}"},      {"GetConnectionUnixProcessID", "u"},
                                     {"GetChildren", "a(so)"}, {"GetMatches", "a(so)"},
                                     {"GetState", "au"},       {"GetRole", "u"},
                                     {"GetNSelections", "i"},  {"GetSelection", "ii"},
                                     {"GetText", "s"},         {"GetLinkIndex", "i"},
                                     {"GetLink", "(so)"},      {"GetObject", "(so)"},
                                     {"GetParent", "(so)"},    {"GetApplication", "(so)"}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto& bus = fuzz::FakeBus::session();
  static int count = 1;
  static char name[] = "accessibility";
  static char* arguments[] = {name, nullptr};
  static const QCoreApplication application(count, arguments);
  // One connection for the whole run, as Tavin has it.
  static windows::FrontWindow front;
  static const auto tracker =
      std::make_shared<capture::FocusTracker>(std::make_unique<Windows>(front), bus::sessionBus());
  Log log;
  capture::AtspiAccessibility accessibility(tracker, bus::sessionBus(), log, true, [] {});
  FuzzedDataProvider input(data, size);
  front = anyWindow(input);
  bus.answerWith(&input, answers);
  accessibility.isProcessTrusted(input.ConsumeBool());
  const auto focused =
      accessibility.createSystemWideElement()->copyAttributeValue("AXFocusedUIElement");
  if (focused)
    std::get<std::shared_ptr<UIElement>>(*focused)->copyAttributeValue("AXSelectedText");
  tracker->mayReceiveCopy();
  bus.answerWith(nullptr);
  return 0;
}
