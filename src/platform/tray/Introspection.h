#pragma once

namespace tavin::tray {

// Introspection data of the two interfaces that panels talk to.
extern const char* const dbusMenuDescription;
extern const char* const statusNotifierItemDescription;

}  // namespace tavin::tray
