// Desktops that answer anything to Tavin's requests on the session's bus, and send it any signal.

#include <QCoreApplication>
#include <QTemporaryDir>
#include <array>

#include "bus/FakeBus.h"
#include "platform/gnome/ShellWatch.h"
#include "platform/kde/GlobalAccel.h"
#include "platform/portal/GlobalShortcuts.h"
#include "platform/portal/RemoteDesktop.h"

using namespace tavin;
using shortcuts::KeyCombination;

namespace {

class Log final : public SystemLog {
 public:
  void write(const QString&) override {}
};

struct Signal {
  const char* path;
  const char* interface;
  const char* member;
  const char* signature;
};
constexpr std::array<Signal, 8> signals{{
    {"/component/app_tavin_Tavin", "org.kde.kglobalaccel.Component", "globalShortcutPressed",
     "ssx"},
    {"/component/app_tavin_Tavin", "org.kde.kglobalaccel.Component", "globalShortcutReleased",
     "ssx"},
    {"/org/freedesktop/portal/desktop", "org.freedesktop.portal.GlobalShortcuts", "Activated",
     "osta{sv}"},
    {"/org/freedesktop/portal/desktop", "org.freedesktop.portal.GlobalShortcuts", "Deactivated",
     "osta{sv}"},
    {"/a/b_1", "org.freedesktop.portal.Session", "Closed", "a{sv}"},
    {nullptr, "org.freedesktop.portal.Request", "Response", "ua{sv}"},
    {nullptr, "org.freedesktop.portal.Request", "Response", "ua{sv}"},
    {nullptr, "org.freedesktop.portal.Request", "Response", "ua{sv}"},
}};

const fuzz::FakeBus::Answers answers{{"setShortcutKeys", "a(ai)"},
                                     {"doRegister", ""},
                                     {"CreateSession", "o"},
                                     {"ListShortcuts", "o"},
                                     {"BindShortcuts", "o"},
                                     {"SelectDevices", "o"},
                                     {"Start", "o"},
                                     {"Register", ""},
                                     {"GetAll", "a{sv}"},
                                     {"Get", "v"},
                                     {"NotifyKeyboardKeycode", ""}};

fuzz::Message anySignal(FuzzedDataProvider& input, const std::string& requestPath) {
  const Signal signal = input.PickValueInArray(signals);
  fuzz::Message message(dbus_message_new_signal(
      signal.path != nullptr ? signal.path : requestPath.c_str(), signal.interface, signal.member));
  fuzz::appendAny(*message, fuzz::anySignature(input, signal.signature), input);
  return message;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static int count = 1;
  static char name[] = "bus_answers";
  static char* arguments[] = {name, nullptr};
  static auto& bus = fuzz::FakeBus::session();
  static const QCoreApplication application(count, arguments);
  static const bus::OwnConnection connection("fuzz");
  FuzzedDataProvider input(data, size);
  bus.answerWith(&input, answers);
  {
    const KeyCombination altEscape{KeyCombination::Key::escape, KeyCombination::alt};
    Log log;
    kde::GlobalAccel accel;
    portal::GlobalShortcuts shortcuts([](const auto&) { return std::nullopt; });
    static const QTemporaryDir folder;
    portal::RemoteDesktop remote(log, portal::RestoreToken(folder.filePath("token")));
    gnome::ShellWatch shell(*connection, [](const QString&) {});
    accel.add(altEscape);
    shortcuts.add(altEscape);
    for (int left = 10; left > 0 && input.remaining_bytes() > 0; --left) {
      if (const auto session = remote.sessionOrAsk())
        remote.type(*session, {{1, true}, {1, false}});
      bus.settle();
      bus.emitSignal(anySignal(input, bus.watchedPath()));
    }
    bus.settle();
    accel.release();
    bus.answerWith(nullptr);
  }
  bus.settle();
  return 0;
}
