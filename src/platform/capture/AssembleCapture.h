#pragma once

#include <QDBusConnection>
#include <memory>

#include "platform/SystemLog.h"
#include "platform/capture/Capture.h"
#include "platform/copy/Clipboard.h"
#include "platform/copy/CopyKey.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::capture {

// What differs between the window systems. All must be there but the key: without it nothing is
// ever copied.
struct CaptureParts {
  std::unique_ptr<windows::WindowSystem> windows;
  copy::Clipboard clipboard;
  std::unique_ptr<copy::CopyKey> key;
};

// Puts them together with accessibility, which `bus`, the session's, leads to. `log` must outlive
// it. Needs the QCoreApplication.
Capture assembleCapture(SystemLog& log, const QDBusConnection& bus, CaptureParts parts);

}  // namespace tavin::capture
