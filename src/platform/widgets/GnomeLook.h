#pragma once

namespace tavin::widgets {

// Gives the program's windows what GNOME's settings say of colours, contrast and the size of
// letters, some of which Qt does not know. Does nothing on other desktops. Once, before the first
// window, in the main thread.
void followGnomeLook();

}  // namespace tavin::widgets
