#pragma once

namespace tavin::desktop {

// Plays the sound theme's "bell" and returns when it has ended, at most 5 s later. False where it
// cannot be played. A connection to the sound server is made for each, so that none stays behind
// and wakes the program. Any thread.
bool playBellSound();

}  // namespace tavin::desktop
