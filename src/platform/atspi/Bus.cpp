#include "platform/atspi/Bus.h"

#include <algorithm>
#include <cmath>

#include "platform/atspi/BusAddress.h"
#include "platform/bus/BusProbe.h"

namespace tavin::atspi {
namespace {

// The time of a message begins when it is sent, and a program answers one after the other: with
// more of them under way it is ours that makes the last ones late.
constexpr std::size_t mostUnderWay = 200;
// More are forgotten: nothing tells which programs have ended.
constexpr std::size_t mostProcessIds = 1000;

const ObjectRef registryRoot{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};

QDBusMessage messageFor(const Question& question) {
  const QString interface = QLatin1String(question.interface);
  auto message = QDBusMessage::createMethodCall(
      question.object.service, question.object.path,
      interface.contains('.') ? interface : "org.a11y.atspi." + interface,
      QLatin1String(question.member));
  message.setArguments(question.arguments);
  return message;
}

}  // namespace

Question property(const ObjectRef& object, const char* interface, const char* name) {
  return {object,
          "org.freedesktop.DBus.Properties",
          "Get",
          {QString("org.a11y.atspi." + QLatin1String(interface)), QString(QLatin1String(name))}};
}

Bus::~Bus() {
  if (!name_.isEmpty())
    QDBusConnection::disconnectFromBus(name_);
}

bool Bus::connect(Deadline deadline) {
  const std::lock_guard lock(mutex_);
  if (!name_.isEmpty() && QDBusConnection(name_).isConnected())
    return true;
  if (!name_.isEmpty())
    QDBusConnection::disconnectFromBus(name_);
  name_.clear();
  processIds_.clear();
  const QString address = busAddress(session_, deadline);
  if (address.isEmpty() || !bus::busAnswers(address, deadline))
    return false;
  name_ = QString("tavin-accessibility-%1-%2").arg(quintptr(this)).arg(++connections_);
  if (!QDBusConnection::connectToBus(address, name_).isConnected()) {
    QDBusConnection::disconnectFromBus(name_);
    name_.clear();
    return false;
  }
  keepListenerRegistered();
  return true;
}

// Accessibility may be switched off when its last listener leaves. Being registered costs nothing:
// without a match rule the bus sends us none of these events.
void Bus::keepListenerRegistered() {
  auto message = messageFor({{registryRoot.service, "/org/a11y/atspi/registry"},
                             "Registry",
                             "RegisterEvent",
                             {QString("window:activate"), QStringList()}});
  message.setAutoStartService(true);
  QDBusConnection(name_).send(message);
}

QDBusConnection Bus::connection() {
  const std::lock_guard lock(mutex_);
  return QDBusConnection(name_);
}

QDBusPendingCall Bus::send(const QDBusMessage& message, Deadline deadline) {
  const int limit = static_cast<int>(std::lround(messageSeconds_ * 1000));
  return connection().asyncCall(message, std::clamp(deadline.remainingMs(), 1, limit));
}

QDBusPendingCall Bus::send(const Question& question, Deadline deadline) {
  return send(messageFor(question), deadline);
}

QDBusMessage Bus::ask(const Question& question, Deadline deadline) {
  QDBusPendingCall call = send(question, deadline);
  call.waitForFinished();
  return call.reply();
}

std::vector<QDBusMessage> Bus::ask(const std::vector<Question>& questions, Deadline deadline) {
  std::vector<QDBusMessage> answers;
  while (answers.size() < questions.size() && !deadline.passed()) {
    const std::size_t end = std::min(questions.size(), answers.size() + mostUnderWay);
    std::vector<QDBusPendingCall> calls;
    for (std::size_t i = answers.size(); i < end; ++i)
      calls.push_back(send(questions[i], deadline));
    for (auto& call : calls) {
      call.waitForFinished();
      answers.push_back(call.reply());
    }
  }
  answers.resize(questions.size(), QDBusMessage::createError(QDBusError::NoReply, "no time left"));
  return answers;
}

std::vector<ObjectRef> Bus::programs(Deadline deadline) {
  return objectsIn(ask({registryRoot, "Accessible", "GetChildren"}, deadline));
}

std::vector<std::int64_t> Bus::processIds(const std::vector<ObjectRef>& programs,
                                          Deadline deadline) {
  const ObjectRef daemon{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
  std::vector<Question> questions;
  for (const auto& program : programs) {
    const std::lock_guard lock(mutex_);
    if (!processIds_.contains(program.service))
      questions.push_back(
          {daemon, "org.freedesktop.DBus", "GetConnectionUnixProcessID", {program.service}});
  }
  const auto answers = ask(questions, deadline);
  const std::lock_guard lock(mutex_);
  for (std::size_t i = 0; i < answers.size(); ++i) {
    if (isAnswer(answers[i]))
      processIds_[questions[i].arguments.first().toString()] = valueIn(answers[i]).toUInt();
  }
  std::vector<std::int64_t> ids;
  for (const auto& program : programs) {
    const auto known = processIds_.find(program.service);
    ids.push_back(known == processIds_.end() ? 0 : known->second);
  }
  if (processIds_.size() > mostProcessIds)
    processIds_.clear();
  return ids;
}

}  // namespace tavin::atspi
