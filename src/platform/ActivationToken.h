#pragma once

#include <QString>

namespace tavin {

// Keeps what the desktop gave the user's last deed so that the window which answers it may come to
// the front. Qt's Wayland plug-in takes it from the environment when the next window is activated;
// a program that Tavin starts inherits one that was not used. Nothing without a token, nor with one
// longer than any is: a program with too large an environment can start no other. Main thread.
inline void keepActivationToken(const QString& token) {
  constexpr qsizetype longest = 1024;
  if (!token.isEmpty() && token.size() <= longest)
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

}  // namespace tavin
