#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace tavin {

struct EventHotKeyID {
  std::uint32_t signature = 0;
  std::uint32_t id = 0;
};

// A registration, granted or pending. Only the service looks inside.
struct EventHotKey {
  virtual ~EventHotKey() = default;
};
using EventHotKeyRef = std::shared_ptr<EventHotKey>;

enum class HotkeyState {
  granted,
  refused,  // Of one that was granted or pending: until the desktop says otherwise.
  pending,  // The desktop has yet to answer.
};

struct HotkeyRegistration {
  static constexpr std::int32_t noNumber = -1;

  HotkeyState state = HotkeyState::refused;
  std::int32_t status = noNumber;  // For the log: 0 is success, else the service's own number.
  // Null where the combination was refused at once. What is pending is released like what was
  // granted.
  EventHotKeyRef ref;
  QString reason;  // Why it is not granted, for the log; may be empty.

  static HotkeyRegistration refused(QString reason) {
    return {.state = HotkeyState::refused,
            .status = noNumber,
            .ref = nullptr,
            .reason = std::move(reason)};
  }
};

// Modifier masks and key codes of a combination are those of the macOS hot-key service. Tavin's
// shortcuts have no others.
namespace HotkeyKeys {
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t ansiR = 15;  // The key in the place of R on an ANSI keyboard.
}  // namespace HotkeyKeys
namespace HotkeyModifiers {
inline constexpr std::uint32_t cmdKey = 0x0100;
inline constexpr std::uint32_t shiftKey = 0x0200;
inline constexpr std::uint32_t optionKey = 0x0800;
inline constexpr std::uint32_t controlKey = 0x1000;
inline constexpr std::uint32_t all = cmdKey | shiftKey | optionKey | controlKey;
}  // namespace HotkeyModifiers

// Whatever delivers key presses wherever the keyboard is. Main thread only.
class HotkeyService {
 public:
  virtual ~HotkeyService() = default;
  // False where the session gives programs no shortcuts at all: then each is refused. May change
  // with an answer that came later.
  virtual bool canGrant() const = 0;
  // `callback` is called on the main thread, once for each press however long the key is held.
  virtual std::int32_t installEventHandler(std::function<void(EventHotKeyID)> callback) = 0;
  // `callback` is called on the main thread, never from within another call of this contract, with
  // a registration whose answer came later, or was taken back, and its status as it is from now on.
  // Services that always answer at once never call it.
  virtual void installAnswerHandler(std::function<void(const HotkeyRegistration&)> callback) = 0;
  // Never reports success for a key that will not arrive. Bounded in time.
  virtual HotkeyRegistration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                 EventHotKeyID id) = 0;
  virtual void unregisterEventHotKey(const EventHotKeyRef& ref) = 0;
};

}  // namespace tavin
