#include "platform/x11/HotkeyGrabs.h"

#include <QTimer>
#include <algorithm>
#include <utility>

namespace tavin::x11 {
namespace {

constexpr std::int32_t badAccess = 10;

}  // namespace

struct HotkeyGrabs::HotKey final : EventHotKey {
  std::uint32_t keyCode = 0;
  std::uint32_t modifiers = 0;
  EventHotKeyID id;
  std::uint16_t mask = 0;
  std::vector<KeyGrab> grabs;
  bool active = false;
};

std::unique_ptr<HotkeyGrabs> HotkeyGrabs::create() {
  auto connection = Connection::open();
  if (!connection)
    return nullptr;
  std::unique_ptr<HotkeyGrabs> service(new HotkeyGrabs(std::move(connection)));
  service->keyboard_.announceTo(*service->connection_);
  if (!service->heldKeys_.prepare())
    return nullptr;
  service->mapping_ = HotkeyMapping::read(*service->connection_);
  return service;
}

HotkeyGrabs::HotkeyGrabs(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)),
      heldKeys_(*connection_),
      notifier_(xcb_get_file_descriptor(connection_->get()), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { readEvents(); });
}

HotkeyRegistration HotkeyGrabs::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    EventHotKeyID id) {
  auto hotKey = std::make_shared<HotKey>();
  hotKey->keyCode = keyCode;
  hotKey->modifiers = modifiers;
  hotKey->id = id;
  if (mapping_.keycodes(keyCode).empty() || !mapping_.modifierMask(modifiers))
    return HotkeyRegistration::refused(QStringLiteral("this keyboard has no such key"));
  if (isRegistered(*hotKey))
    return HotkeyRegistration::refused(QStringLiteral("Tavin itself holds the combination"),
                                       nullptr, badAccess);
  const auto refusal = grab(*hotKey);
  readQueuedEventsLater();
  if (refusal)
    return HotkeyRegistration::refused(refusal->reason, nullptr, refusal->status);
  hotKey->active = true;
  hotKeys_.push_back(hotKey);
  return HotkeyRegistration::granted(hotKey);
}

void HotkeyGrabs::unregisterEventHotKey(const EventHotKeyRef& ref) {
  const auto found = std::ranges::find(hotKeys_, ref);
  if (found == hotKeys_.end())
    return;
  ungrab(**found);
  hotKeys_.erase(found);
}

// The display would grant the same client the same combination twice.
bool HotkeyGrabs::isRegistered(const HotKey& wanted) const {
  return std::ranges::any_of(hotKeys_, [&wanted](const auto& hotKey) {
    return hotKey->keyCode == wanted.keyCode && hotKey->modifiers == wanted.modifiers;
  });
}

std::optional<GrabRefusal> HotkeyGrabs::grab(HotKey& hotKey) {
  hotKey.mask = mapping_.modifierMask(hotKey.modifiers).value_or(0);
  for (const xcb_keycode_t keycode : mapping_.keycodes(hotKey.keyCode)) {
    const KeyGrab grab{keycode, mapping_.withLocks(hotKey.mask)};
    if (auto refusal = grabKey(*connection_, grab)) {
      ungrab(hotKey);
      return refusal;
    }
    hotKey.grabs.push_back(grab);
  }
  return std::nullopt;
}

void HotkeyGrabs::ungrab(HotKey& hotKey) {
  for (const KeyGrab& grab : std::exchange(hotKey.grabs, {})) ungrabKey(*connection_, grab);
}

// Events that came in with an answer wait in memory, where the notifier does not see them.
void HotkeyGrabs::readQueuedEventsLater() {
  QTimer::singleShot(0, &notifier_, [this] { readEvents(); });
}

void HotkeyGrabs::readEvents() {
  while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
    handle(*event);
    if (std::exchange(keyboardChanged_, false))
      followKeyboard();
  }
  if (xcb_connection_has_error(connection_->get()) != 0)
    notifier_.setEnabled(false);  // A closed connection would be readable forever.
}

void HotkeyGrabs::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) == XCB_KEY_PRESS)
    handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
  else if (keyboard_.isChange(event))
    keyboardChanged_ = true;
  else
    heldKeys_.observe(event);
}

void HotkeyGrabs::handlePress(const xcb_key_press_event_t& press) {
  // The raw events are asked for before the grab ends, so that the release is seen in any case.
  const bool isNew = heldKeys_.press(press.detail);
  // While the keyboard is grabbed, the focused program has lost its focus and its selection.
  xcb_ungrab_keyboard(connection_->get(), press.time);
  xcb_flush(connection_->get());
  if (!isNew)
    return;
  const auto found = std::ranges::find_if(hotKeys_, [&](const auto& hotKey) {
    return hotKey->mask == mapping_.withoutLocks(press.state) &&
           std::ranges::any_of(hotKey->grabs,
                               [&](const KeyGrab& grab) { return grab.keycode == press.detail; });
  });
  if (found != hotKeys_.end())
    tellPress((*found)->id);
}

// Keys keep their numbers when the layout changes, but not their symbols and modifiers.
void HotkeyGrabs::followKeyboard() {
  auto mapping = HotkeyMapping::read(*connection_);
  if (mapping == mapping_)
    return;
  mapping_ = std::move(mapping);
  for (const auto& hotKey : hotKeys_) ungrab(*hotKey);
  std::vector<HotkeyRegistration> changes;
  for (const auto& hotKey : hotKeys_) {
    if (auto change = changeOf(hotKey))
      changes.push_back(std::move(*change));
  }
  // Only now: whoever hears of it may register anew.
  for (const auto& change : changes) tellAnswer(change);
}

// Grabs it again; what has changed by that, if anything.
std::optional<HotkeyRegistration> HotkeyGrabs::changeOf(const std::shared_ptr<HotKey>& hotKey) {
  const auto refusal = grab(*hotKey);
  if (std::exchange(hotKey->active, !refusal) == !refusal)
    return std::nullopt;
  return refusal ? HotkeyRegistration::refused(refusal->reason, hotKey, refusal->status)
                 : HotkeyRegistration::granted(hotKey);
}

}  // namespace tavin::x11
