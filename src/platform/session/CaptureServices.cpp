#include "platform/session/CaptureServices.h"

#include <array>
#include <utility>

#include "platform/capture/AssembleCapture.h"
#include "platform/gnome/GnomeWindows.h"
#include "platform/gnome/XwaylandPasteboard.h"
#include "platform/session/Candidates.h"
#include "platform/session/ChoosePortalKey.h"
#include "platform/wayland/FakeInput.h"
#include "platform/wayland/VirtualKeyboard.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandWindowSystem.h"
#include "platform/x11/CaptureBackEnd.h"
#include "platform/x11/X11CopyKey.h"

namespace tavin::session {
namespace {

struct KeyNeeds {
  SystemLog& log;
  const std::shared_ptr<gnome::HeldModifiers>& modifiers;
};

using Windows = std::unique_ptr<windows::WindowSystem>;
using Clipboard = std::optional<copy::Clipboard>;
using Key = std::unique_ptr<copy::CopyKey>;
using WindowsRow = Candidate<Windows(const Survey&)>;
using ClipboardRow = Candidate<Clipboard(const Survey&, const QDBusConnection& bus)>;
using KeyRow = Candidate<Key(const Survey&, const KeyNeeds&)>;

bool onCompositor(const Survey& survey) { return survey.compositor != nullptr; }
bool onX(const Survey& survey) { return survey.compositor == nullptr; }
bool onXorg(const Survey& survey) { return !survey.isWaylandSession(); }
bool onWayland(const Survey& survey) { return survey.isWaylandSession(); }
bool nowhere(const Survey&) { return false; }

constexpr const char* compositorWindows = "compositor";

const std::array<WindowsRow, 2> windowsTable{
    {// Knows every window, where X knows Xwayland's alone.
     {compositorWindows, onCompositor,
      [](const Survey& survey) -> Windows {
        return survey.compositor ? std::make_unique<wayland::WaylandWindowSystem>(survey.compositor)
                                 : nullptr;
      }},
     // GNOME tells nobody of its windows: there the rest of them are unknown.
     {"x11", onX, [](const Survey& survey) -> Windows {
        if (survey.isWaylandSession())
          return std::make_unique<gnome::GnomeWindows>(x11::createWindowSystem);
        return x11::createWindowSystem();
      }}}};

const std::array<ClipboardRow, 2> clipboardTable{
    {// Reads and serves without the keyboard's focus.
     {"data-control", onCompositor,
      [](const Survey& survey, const QDBusConnection&) -> Clipboard {
        if (!survey.compositor)
          return std::nullopt;
        // No protocol hands a clipboard over: the managers there have read it already.
        return copy::Clipboard{std::make_unique<wayland::WaylandPasteboard>(survey.compositor),
                               [compositor = survey.compositor] {
                                 compositor->clipboard()->clearNow(Deadline::in(0.5));
                               }};
      }},
     // A compositor without data control shares its clipboard with Xwayland, which may end.
     {"x11", onX, [](const Survey& survey, const QDBusConnection& bus) -> Clipboard {
        return survey.xwayland ? gnome::XwaylandPasteboard::create(x11::createClipboard, bus)
                               : x11::createClipboard();
      }}}};

const std::array<KeyRow, 5> keyTable{
    {// A keyboard of our own, which nothing that the user holds joins.
     {"virtual-keyboard", onCompositor,
      [](const Survey&, const KeyNeeds&) -> Key { return wayland::VirtualKeyboard::create(); }},
     // KWin's: no dialog either.
     {"fake-input", onCompositor,
      [](const Survey&, const KeyNeeds&) -> Key { return wayland::FakeInput::create(); }},
     // Last on Wayland, as it may need a dialog.
     {"portal", onWayland,
      [](const Survey& survey, const KeyNeeds& needs) -> Key {
        return createPortalKey(survey, needs.log, needs.modifiers);
      }},
     // X11 has one way. Xwayland's windows alone would get the keys.
     {"xtest", onXorg,
      [](const Survey&, const KeyNeeds&) -> Key { return x11::X11CopyKey::create(); }},
     // Only where it is forced: nothing is ever copied.
     {"none", nowhere, [](const Survey&, const KeyNeeds&) -> Key { return nullptr; }}}};

// The first that can be made, and its name.
template <typename Row, typename... Needs>
auto firstOf(std::span<const Row> table, const char* variable, const Survey& survey,
             const Needs&... needs) {
  using Made = decltype(std::declval<Row>().create(survey, needs...));
  for (const Row* row : candidates(table, variable, survey)) {
    if (Made made = row->create(survey, needs...))
      return std::pair(std::move(made), QString(QLatin1String(row->name)));
  }
  return std::pair(Made(), QStringLiteral("none"));
}

QString describe(const Survey& survey, const QString& windows, const QString& clipboard,
                 const QString& key) {
  if (!survey.isWaylandSession())
    return QStringLiteral("X11");
  const bool dataControl = clipboard == QLatin1String("data-control");
  return QString("Wayland, clipboard %1, keyboard %2, windows %3, Qt %4")
      .arg(dataControl ? QString::fromStdString(survey.compositor->clipboardName()) : clipboard,
           key,
           windows == QLatin1String(compositorWindows)
               ? QString::fromStdString(survey.compositor->windowsName())
               : QStringLiteral("Xwayland's"),
           survey.qtPlatform());
}

}  // namespace

bool forcesMissingWindows(const Survey& survey) {
  return !survey.compositor && qEnvironmentVariable("TAVIN_WINDOWS") == compositorWindows;
}

std::optional<ChosenCapture> createCapture(const Survey& survey, const QDBusConnection& bus,
                                           SystemLog& log,
                                           const std::shared_ptr<gnome::HeldModifiers>& modifiers) {
  auto [clipboard, clipboardName] =
      firstOf(std::span<const ClipboardRow>(clipboardTable), "TAVIN_CLIPBOARD", survey, bus);
  auto [windows, windowsName] =
      firstOf(std::span<const WindowsRow>(windowsTable), "TAVIN_WINDOWS", survey);
  if (!clipboard || !windows)
    return std::nullopt;
  const KeyNeeds needs{log, modifiers};
  auto [key, keyName] = firstOf(std::span<const KeyRow>(keyTable), "TAVIN_KEYBOARD", survey, needs);
  return ChosenCapture{capture::assembleCapture(
                           log, bus, {std::move(windows), std::move(*clipboard), std::move(key)}),
                       describe(survey, windowsName, clipboardName, keyName)};
}

}  // namespace tavin::session
