#pragma once

#include <QDBusConnection>
#include <QString>
#include <memory>
#include <optional>

#include "platform/SystemLog.h"
#include "platform/capture/Capture.h"
#include "platform/session/Survey.h"

namespace tavin::gnome {
class HeldModifiers;
}

namespace tavin::session {

struct ChosenCapture {
  capture::Capture capture;
  QString description;  // What was chosen, in one line.
};

// What reads and copies the selected text in this session: the windows, the clipboard and the
// keyboard each chosen on its own, so that one that is missing takes no other away. For tests and
// for sessions that offer more than works, TAVIN_CLIPBOARD, TAVIN_KEYBOARD and TAVIN_WINDOWS force
// one each by its name in the table.
//
// None where the windows or the clipboard cannot be had. `modifiers` is told of each press of a
// shortcut on GNOME, and null elsewhere. `log` must outlive what is made. After Qt is started.
std::optional<ChosenCapture> createCapture(const Survey& survey, const QDBusConnection& bus,
                                           SystemLog& log,
                                           const std::shared_ptr<gnome::HeldModifiers>& modifiers);

// Whether the environment asks for windows that this session has not.
bool forcesMissingWindows(const Survey& survey);

}  // namespace tavin::session
