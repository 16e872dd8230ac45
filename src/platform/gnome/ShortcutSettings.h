#pragma once

#include <QString>
#include <QStringList>

#include "platform/gnome/Accelerator.h"

namespace tavin::gnome {

// The custom shortcuts of GNOME's settings, each of which runs a command: a list of paths, and at
// each path a name, a key and the command. Main thread.

QString mediaKeysSchema();
QString customSchema();
// All that are in force, ours and the user's, in order.
QStringList customPaths();

// Where ours stand: one for each of keyActions().
const QStringList& keyActions();
QString customPathOf(const QString& action);
QStringList ourCustomPaths();

// The D-Bus action that a press runs: not the one that programs run, since a press is repeated.
QString runActionOf(const QString& action);

// Adds ours for an action, or changes it. A key that is already in force changes at once.
void addCustomBinding(const QString& action, const QString& title, const Accelerator& key);
// Takes ours away and leaves the others as they are. Nothing is written where it is not there.
void removeCustomBinding(const QString& action);
// Both, also those that a killed Tavin left behind.
void removeCustomBindings();

}  // namespace tavin::gnome
