#pragma once

#include <functional>

namespace tavin::test {

// Runs the event loop until the condition holds; false when it does not within five seconds.
bool waitFor(const std::function<bool()>& condition);

// Runs the event loop for a moment: whatever is due now, and deletions.
void runEvents();

}  // namespace tavin::test
