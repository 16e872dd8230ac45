#include "hotkeys/HotkeyCenter.h"

#include <limits>
#include <utility>

#include "platform/Fatal.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"

namespace tavin {
namespace {

std::uint32_t unsigned32(std::int64_t value) {
  require(value >= 0 && value <= std::numeric_limits<std::uint32_t>::max(),
          "a key code or modifier mask is out of range");
  return static_cast<std::uint32_t>(value);
}

}  // namespace

HotkeyCenter::HotkeyCenter(HotkeyService& service, MainQueue& mainQueue, SystemLog& log)
    : service_(service),
      mainQueue_(mainQueue),
      log_(log),
      handlers_(std::make_shared<std::map<std::uint32_t, Handler>>()) {}

void HotkeyCenter::installOnce() {
  if (installed_)
    return;
  installed_ = true;
  // The handler runs from the queue, after the platform has finished with the key event.
  service_.installEventHandler([this, handlers = handlers_](EventHotKeyID pressed) {
    mainQueue_.async([handlers, id = pressed.id] {
      const auto found = handlers->find(id);
      if (found == handlers->end())
        return;
      const Handler handler = found->second;  // It may register anew, which drops the stored one.
      handler();
    });
  });
}

bool HotkeyCenter::registerHotkey(std::int64_t keyCode, std::int64_t modifiers, Handler handler) {
  installOnce();
  const auto id = static_cast<std::uint32_t>(handlers_->size() + 1);
  HotkeyRegistration result = service_.registerEventHotKey(
      unsigned32(keyCode), unsigned32(modifiers), {.signature = signature, .id = id});
  if (result.status == 0 && result.ref) {
    (*handlers_)[id] = std::move(handler);
    refs_.push_back(std::move(result.ref));
    return true;
  }
  log_.write(QStringLiteral("Tavin: hotkey keyCode=%1 modifiers=%2 unavailable (%3)")
                 .arg(keyCode)
                 .arg(modifiers)
                 .arg(result.status));
  if (!result.reason.isEmpty())
    log_.write(QStringLiteral("Tavin: ") + result.reason);
  return false;
}

void HotkeyCenter::unregisterAll() {
  for (const EventHotKeyRef& ref : refs_) service_.unregisterEventHotKey(ref);
  refs_.clear();
  handlers_->clear();
}

}  // namespace tavin
