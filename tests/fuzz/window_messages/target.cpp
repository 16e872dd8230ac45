// What Tavin and the program that shows its windows read from each other.

#include "Claim.h"
#include "platform/windowlink/Messages.h"

using namespace tavin;

// One value is written in one way: a message that is read is written again as it came.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const auto request = windowlink::decodeRequest(bytes))
    fuzz::claim(windowlink::encode(*request) == bytes, "a request that was read is what was sent");
  if (const auto event = windowlink::decodeEvent(bytes))
    fuzz::claim(windowlink::encode(*event) == bytes, "an event that was read is what was sent");
  return 0;
}
