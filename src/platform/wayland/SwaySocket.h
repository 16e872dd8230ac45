#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>

#include "platform/Deadline.h"

namespace tavin::wayland {

// The kinds of message that sway takes, by its own numbers.
enum class SwayMessage : std::uint32_t { runCommand = 0, getTree = 4 };

// Sends one over the socket that SWAYSOCK names, and returns the answer. None where that is not
// set, or nothing answers there in time and in sway's language. Any thread.
std::optional<QByteArray> askSway(SwayMessage message, const QByteArray& payload,
                                  Deadline deadline);

}  // namespace tavin::wayland
