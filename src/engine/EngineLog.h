#pragma once

#include <QString>

namespace tavin::EngineLog {

// The file that the engine's output goes to, under the user's home directory.
QString path();

// Opens it for appending, made with its folders where missing. -1 when that fails.
int open();

}  // namespace tavin::EngineLog
