#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

namespace tavin::kde {

// The service that holds the shortcuts of a Plasma session, and our part in it.
inline const QString globalAccelService = QStringLiteral("org.kde.kglobalaccel");
inline const QString componentName = QStringLiteral("app.tavin.Tavin");
inline const QString componentPath = QStringLiteral("/component/app_tavin_Tavin");

// One of our shortcuts as the service knows it.
struct Action {
  QString name;
  QString title;  // Shown to the user in the system settings.
  int key = 0;    // As Qt numbers keys.
};

// Announces the action; to be sent before the next one. Needs no answer.
QDBusMessage registration(const Action& action);
// Asks for the action's key, whatever key it had, and for no other. The answer tells which it has.
QDBusMessage keyRequest(const Action& action);
// Whether that answer is the key that was asked for.
bool isGranted(const QDBusMessage& answer, const Action& action);
// Takes the action away with its key. Needs no answer.
QDBusMessage removal(const Action& action);

}  // namespace tavin::kde
