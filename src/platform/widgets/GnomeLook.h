#pragma once

namespace tavin::widgets {

// Gives the program's windows GNOME's colour scheme, high contrast and text scaling, which Qt only
// partly follows. Does nothing on other desktops. Once, before the first window, in the main
// thread.
void followGnomeLook();

}  // namespace tavin::widgets
