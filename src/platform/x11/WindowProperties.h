#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// A window's property as 32-bit units (atoms, windows, numbers) or as text; empty where the window
// is gone or has no such property.
std::vector<std::uint32_t> unitsProperty(const Connection& connection, xcb_window_t window,
                                         xcb_atom_t property);
std::string textProperty(const Connection& connection, xcb_window_t window, xcb_atom_t property);

// Both names in WM_CLASS, in lower case.
std::vector<std::string> windowClass(const Connection& connection, xcb_window_t window);

// The process behind a window or any other resource of a client on this machine, as the server saw
// it connect; 0 where that is not known.
std::int64_t clientProcess(const Connection& connection, std::uint32_t resource);
// Of all clients.
std::vector<std::int64_t> clientProcesses(const Connection& connection);
// A number that all resources of the client that made this one have in common.
std::uint32_t clientOf(const Connection& connection, std::uint32_t resource);
// Whether the same client made both.
bool sameClient(const Connection& connection, std::uint32_t one, std::uint32_t other);

}  // namespace tavin::x11
