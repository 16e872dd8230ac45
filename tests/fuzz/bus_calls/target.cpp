// Panels and other programs that call what Tavin offers on the session's bus: its menu, its icon
// and itself.

#include <QCoreApplication>
#include <array>

#include "bus/FakeBus.h"
#include "platform/bus/SessionBus.h"
#include "platform/bus/SessionBusControl.h"
#include "platform/tray/DBusMenu.h"
#include "platform/tray/MenuSource.h"
#include "platform/tray/StatusNotifierItem.h"
#include "tests/platform/tray/SampleMenu.h"

using namespace tavin;

namespace {

struct Method {
  const char* path;
  const char* interface;
  const char* member;
  const char* signature;
};
constexpr auto menu = "com.canonical.dbusmenu";
constexpr auto icon = "org.kde.StatusNotifierItem";
constexpr auto program = "org.freedesktop.Application";
constexpr auto properties = "org.freedesktop.DBus.Properties";
constexpr auto programPath = "/app/tavin/Tavin";
using tray::DBusMenu;
using tray::StatusNotifierItem;
constexpr std::array<Method, 22> methods{{
    {DBusMenu::path, menu, "GetLayout", "iias"},
    {DBusMenu::path, menu, "GetGroupProperties", "aias"},
    {DBusMenu::path, menu, "GetProperty", "is"},
    {DBusMenu::path, menu, "Event", "isvu"},
    {DBusMenu::path, menu, "EventGroup", "a(isvu)"},
    {DBusMenu::path, menu, "AboutToShow", "i"},
    {DBusMenu::path, menu, "AboutToShowGroup", "ai"},
    {DBusMenu::path, menu, "Nothing", ""},
    {DBusMenu::path, properties, "Get", "ss"},
    {DBusMenu::path, properties, "GetAll", "s"},
    {DBusMenu::path, properties, "Set", "ssv"},
    {StatusNotifierItem::path, icon, "Activate", "ii"},
    {StatusNotifierItem::path, icon, "ContextMenu", "ii"},
    {StatusNotifierItem::path, icon, "SecondaryActivate", "ii"},
    {StatusNotifierItem::path, icon, "Scroll", "is"},
    {StatusNotifierItem::path, icon, "ProvideXdgActivationToken", "s"},
    {StatusNotifierItem::path, properties, "GetAll", "s"},
    {programPath, program, "Activate", "a{sv}"},
    {programPath, program, "Open", "asa{sv}"},
    {programPath, program, "ActivateAction", "sava{sv}"},
    {programPath, program, "Nothing", "s"},
    {programPath, properties, "Get", "ss"},
}};

fuzz::Message anyCall(FuzzedDataProvider& input) {
  const Method method = input.PickValueInArray(methods);
  fuzz::Message call(dbus_message_new_method_call(
      nullptr, method.path, input.ConsumeBool() ? method.interface : nullptr, method.member));
  fuzz::appendAny(*call, fuzz::anySignature(input, method.signature), input);
  return call;
}

std::vector<MenuItem> anyItems(FuzzedDataProvider& input, int depth) {
  std::vector<MenuItem> items;
  for (int left = input.ConsumeIntegralInRange(0, 6); left > 0; --left) {
    const QString title = QString::fromStdString(input.ConsumeRandomLengthString(12));
    const int kind = input.ConsumeIntegralInRange(0, depth > 0 ? 2 : 3);
    items.push_back(kind == 0   ? test::separator()
                    : kind == 1 ? test::choice(title, "af", input.ConsumeBool())
                    : kind == 2 ? test::disabled(title)
                                : test::submenu(title, anyItems(input, depth + 1)));
  }
  return items;
}

// One for the whole run: panels stay for long, and so does what they have been told.
struct Offered {
  fuzz::FakeBus& bus = fuzz::FakeBus::session();
  bus::OwnConnection connection{"fuzz"};
  test::SampleMenu sample;
  tray::MenuSource source{[] {}};
  DBusMenu menu{*connection, source};
  StatusNotifierItem item{*connection, [](QPoint) {}};
  bus::SessionBusControl control{*connection};

  Offered() {
    source.setMenu(&sample.menu);
    control.serve({});
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static int count = 1;
  static char name[] = "bus_calls";
  static char* arguments[] = {name, nullptr};
  fuzz::FakeBus::session();
  static const QCoreApplication application(count, arguments);
  static Offered offered;
  FuzzedDataProvider input(data, size);
  offered.sample.items = anyItems(input, 0);
  offered.sample.performed.clear();
  std::vector<fuzz::Message> calls;
  for (int left = 20; left > 0 && input.remaining_bytes() > 0; --left)
    calls.push_back(anyCall(input));
  offered.bus.call(calls);
  offered.bus.settle();
  return 0;
}
