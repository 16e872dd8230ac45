#include "platform/x11/HotkeyGrabs.h"

#include <QTimer>
#include <algorithm>
#include <utility>

namespace tavin::x11 {

using shortcuts::Answer;
using shortcuts::KeyCombination;

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

Answer HotkeyGrabs::add(const KeyCombination& combination) {
  Grabbed grabbed;
  const auto refusal = grab(combination, grabbed);
  readQueuedEventsLater();
  if (refusal)
    return Answer::refused(refusal->reason, refusal->status);
  grabbed.active = true;
  grabbed_.emplace(combination, std::move(grabbed));
  return Answer::granted();
}

void HotkeyGrabs::remove(const KeyCombination& combination) {
  const auto found = grabbed_.find(combination);
  if (found == grabbed_.end())
    return;
  ungrab(found->second);
  grabbed_.erase(found);
}

std::optional<GrabRefusal> HotkeyGrabs::grab(const KeyCombination& combination, Grabbed& grabbed) {
  grabbed.mask = mapping_.modifierMask(combination);
  for (const xcb_keycode_t keycode : mapping_.keycodes(combination.key)) {
    const KeyGrab grab{keycode, mapping_.withLocks(grabbed.mask)};
    if (auto refusal = grabKey(*connection_, grab)) {
      ungrab(grabbed);
      return refusal;
    }
    grabbed.grabs.push_back(grab);
  }
  return std::nullopt;
}

void HotkeyGrabs::ungrab(Grabbed& grabbed) {
  for (const KeyGrab& grab : std::exchange(grabbed.grabs, {})) ungrabKey(*connection_, grab);
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
  const auto found = std::ranges::find_if(grabbed_, [&](const auto& each) {
    return each.second.mask == mapping_.withoutLocks(press.state) &&
           std::ranges::any_of(each.second.grabs,
                               [&](const KeyGrab& grab) { return grab.keycode == press.detail; });
  });
  if (found != grabbed_.end())
    tellPress(KeyCombination(found->first));
}

// Keys keep their numbers when the layout changes, but not their symbols and modifiers.
void HotkeyGrabs::followKeyboard() {
  auto mapping = HotkeyMapping::read(*connection_);
  if (mapping == mapping_)
    return;
  mapping_ = std::move(mapping);
  for (auto& [combination, grabbed] : grabbed_) ungrab(grabbed);
  std::vector<std::pair<KeyCombination, Answer>> changes;
  for (auto& [combination, grabbed] : grabbed_) {
    if (auto change = changeOf(combination, grabbed))
      changes.emplace_back(combination, std::move(*change));
  }
  // Only now: whoever hears of it may register again.
  for (const auto& [combination, change] : changes) tellAnswer(combination, change);
}

// Grabs it again; what has changed by that, if anything.
std::optional<Answer> HotkeyGrabs::changeOf(const KeyCombination& combination, Grabbed& grabbed) {
  const auto refusal = grab(combination, grabbed);
  if (std::exchange(grabbed.active, !refusal) == !refusal)
    return std::nullopt;
  return refusal ? Answer::refused(refusal->reason, refusal->status) : Answer::granted();
}

}  // namespace tavin::x11
