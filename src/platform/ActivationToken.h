#pragma once

#include <QString>
#include <utility>

namespace tavin {

// Where one comes in the environment, and where a program that is started looks for it.
inline constexpr const char* activationTokenVariable = "XDG_ACTIVATION_TOKEN";

// What the desktop gave the user's last action, so that the window which answers it may come to the
// front. Not in this process's environment, which other threads read. Main thread.
inline QString& activationToken() {
  static QString token;
  return token;
}

// Nothing is kept without a token, nor with one longer than any is: a program with too large an
// environment cannot be started. Main thread.
inline void keepActivationToken(const QString& token) {
  constexpr qsizetype longest = 1024;
  if (!token.isEmpty() && token.size() <= longest)
    activationToken() = token;
}

// Keeps the one that this program was started with. Before there are other threads.
inline void keepActivationTokenOfStart() {
  keepActivationToken(qEnvironmentVariable(activationTokenVariable));
  qunsetenv(activationTokenVariable);
}

// The token for the window or the program that answers it, once; empty without one. Main thread.
inline QString takeActivationToken() { return std::exchange(activationToken(), QString()); }

}  // namespace tavin
