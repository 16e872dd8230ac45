#pragma once

namespace tavin::posix {

// What the process owes itself before it opens its first file.

// Gives the null device to the standard files that are closed: else the next file that is opened
// takes their number, and gets the log's lines.
void openStandardFiles();

// Keeps this process and its children from leaving their memory in a file when they crash: it holds
// texts, the clipboard and keys. A developer who wants a core dump sets TAVIN_CORE_DUMPS. The
// process stays one that others of this user may look into: its engine must know it again.
void keepMemoryPrivate();

}  // namespace tavin::posix
