#pragma once

#include <QString>

namespace tavin {

// Keeps what the desktop gave the user's last action so that the window which answers it may come
// to the front. A program that Tavin starts, such as that of the desktop's settings, inherits one
// that was not used for a window of our own. Nothing without a token, nor with one longer than any
// is: a program with too large an environment can start no other. Main thread.
inline void keepActivationToken(const QString& token) {
  constexpr qsizetype longest = 1024;
  if (!token.isEmpty() && token.size() <= longest)
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

// The token for the window that answers it, once; empty without one. Main thread.
inline QString takeActivationToken() {
  QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
  qunsetenv("XDG_ACTIVATION_TOKEN");
  return token;
}

}  // namespace tavin
