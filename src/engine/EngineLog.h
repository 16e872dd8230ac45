#pragma once

#include <QString>

namespace tavin::EngineLog {

// The file that the engine's output goes to, under the user's home directory.
QString path();

// Opens it for appending, made with its folders where missing. -1 when that fails or when it is no
// regular file. Never waits for another program.
int open();

}  // namespace tavin::EngineLog
