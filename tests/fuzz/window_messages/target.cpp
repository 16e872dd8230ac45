// What Tavin and the program that shows its windows read from each other.

#include "Claim.h"
#include "platform/gui/Messages.h"

using namespace tavin;

// One value is written in one way: a message that is read is written again as it came.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const auto request = gui::decodeRequest(bytes))
    fuzz::claim(gui::encode(*request) == bytes, "a request that was read is what was sent");
  if (const auto event = gui::decodeEvent(bytes))
    fuzz::claim(gui::encode(*event) == bytes, "an event that was read is what was sent");
  return 0;
}
