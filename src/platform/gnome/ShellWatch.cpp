#include "platform/gnome/ShellWatch.h"

#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <limits>
#include <utility>

namespace tavin::gnome {
namespace {

constexpr int whenItMay = std::numeric_limits<int>::max();

const QString shell = QStringLiteral("org.gnome.Shell");

}  // namespace

QDBusMessage shellVersionQuestion() {
  auto question = QDBusMessage::createMethodCall(shell, QStringLiteral("/org/gnome/Shell"),
                                                 QStringLiteral("org.freedesktop.DBus.Properties"),
                                                 QStringLiteral("Get"));
  question << shell << QStringLiteral("ShellVersion");
  question.setAutoStartService(false);
  return question;
}

QString shellVersionIn(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage)
    return {};
  return answer.arguments().value(0).value<QDBusVariant>().variant().toString();
}

ShellWatch::ShellWatch(const QDBusConnection& bus, std::function<void(const QString&)> found)
    : bus_(bus),
      owners_(shell, bus, QDBusServiceWatcher::WatchForRegistration),
      found_(std::move(found)) {
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceRegistered, &owners_, [this] { ask(); });
  ask();
}

void ShellWatch::ask() {
  if (!found_)
    return;
  auto* reply =
      new QDBusPendingCallWatcher(bus_.asyncCall(shellVersionQuestion(), whenItMay), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this](QDBusPendingCallWatcher* done) {
                     done->deleteLater();
                     const QString version = shellVersionIn(done->reply());
                     if (version.isEmpty() || !found_)
                       return;
                     const auto found = std::exchange(found_, nullptr);
                     found(version);
                   });
}

}  // namespace tavin::gnome
