#pragma once

#include <QVariant>

#include "platform/atspi/Object.h"

namespace tavin::atspi {

// Arguments for Collection.GetMatches: every object below with one state, or with one interface.
QVariantList matchesWithState(States::Bit state);
QVariantList matchesWithInterface(const QString& interface, int most);

}  // namespace tavin::atspi
