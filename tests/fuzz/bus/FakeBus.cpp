#include "bus/FakeBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <cstring>
#include <thread>

#include "Claim.h"

namespace tavin::fuzz {
namespace {

constexpr int mostRounds = 50;

bool isCalled(DBusMessage& call, const char* member) {
  return std::strcmp(dbus_message_get_member(&call), member) == 0;
}

bool isForDaemon(DBusMessage& call) {
  const char* const destination = dbus_message_get_destination(&call);
  return destination != nullptr && std::strcmp(destination, FakeBus::daemon) == 0;
}

Message errorTo(DBusMessage& call, const char* name) {
  return Message(dbus_message_new_error(&call, name, "as the input has it"));
}

Message answerWithText(DBusMessage& call, const std::string& text) {
  Message answer(dbus_message_new_method_return(&call));
  const char* const begin = text.c_str();
  dbus_message_append_args(answer.get(), DBUS_TYPE_STRING, &begin, DBUS_TYPE_INVALID);
  return answer;
}

Message answerWithNumber(DBusMessage& call, dbus_uint32_t number) {
  Message answer(dbus_message_new_method_return(&call));
  dbus_message_append_args(answer.get(), DBUS_TYPE_UINT32, &number, DBUS_TYPE_INVALID);
  return answer;
}

}  // namespace

FakeBus& FakeBus::session() {
  static auto* const bus = new FakeBus;
  return *bus;
}

FakeBus::FakeBus() : listener_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  static const QTemporaryDir folder;
  const QByteArray path = folder.filePath("bus").toUtf8();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
  claim(bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
            listen(listener_, 20) == 0,
        "the bus is there");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
  qputenv("AT_SPI_BUS_ADDRESS", "unix:path=" + path);
  std::thread([this] { serve(); }).detach();
}

void FakeBus::answerWith(FuzzedDataProvider* input, Answers answers) {
  const std::lock_guard lock(mutex_);
  input_ = input;
  answers_ = std::move(answers);
}

void FakeBus::emitSignal(Message signal) {
  if (dbus_message_get_sender(signal.get()) == nullptr)
    dbus_message_set_sender(signal.get(), program);
  const std::lock_guard lock(mutex_);
  for (const Client& client : clients_) {
    if (!client.name.empty())
      send(client, *signal);
  }
}

void FakeBus::call(const std::vector<Message>& calls) {
  {
    const std::lock_guard lock(mutex_);
    claim(!clients_.empty() && !clients_.back().name.empty(), "there is a connection");
    for (const Message& call : calls) sendCall(clients_.back(), *call);
  }
  awaitAnswers();
}

std::string FakeBus::watchedPath() {
  const std::lock_guard lock(mutex_);
  return watchedPath_;
}

// What has arrived before a ping is in our event loop before its answer is here.
void FakeBus::settle() {
  for (int round = 0, before = -1, now = 0; before != now && round < mostRounds; ++round) {
    {
      const std::lock_guard lock(mutex_);
      for (Client& client : clients_) {
        const Message ping(
            dbus_message_new_method_call(nullptr, "/", "org.freedesktop.DBus.Peer", "Ping"));
        if (!client.name.empty())
          sendCall(client, *ping);
      }
      before = received_;
    }
    awaitAnswers();
    QCoreApplication::processEvents();
    const std::lock_guard lock(mutex_);
    now = received_;
  }
}

void FakeBus::awaitAnswers() {
  const auto waits = [this] {
    const std::lock_guard lock(mutex_);
    return waits_ = isAwaiting();
  };
  while (waits()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void FakeBus::sendCall(Client& client, DBusMessage& call) {
  dbus_message_set_sender(&call, program);
  dbus_message_set_destination(&call, client.name.c_str());
  ++client.awaited;
  send(client, call);
}

void FakeBus::send(const Client& client, DBusMessage& message) {
  const Message copy(dbus_message_copy(&message));
  dbus_message_set_serial(copy.get(), ++serial_);
  char* bytes = nullptr;
  int size = 0;
  claim(dbus_message_marshal(copy.get(), &bytes, &size), "a message can be written");
  for (int sent = 0; sent < size;) {
    const auto count =
        ::send(client.socket, bytes + sent, static_cast<std::size_t>(size - sent), MSG_NOSIGNAL);
    if (count < 0)
      break;  // It has hung up.
    sent += static_cast<int>(count);
  }
  dbus_free(bytes);
}

void FakeBus::serve() {
  for (;;) {
    std::vector<pollfd> files{{listener_, POLLIN, 0}};
    {
      const std::lock_guard lock(mutex_);
      for (const Client& client : clients_) files.push_back({client.socket, POLLIN, 0});
    }
    poll(files.data(), files.size(), -1);
    const std::lock_guard lock(mutex_);
    auto file = files.begin() + 1;
    for (auto client = clients_.begin(); file != files.end(); ++file) {
      const auto next = std::next(client);
      if (file->revents != 0 && !receive(*client)) {
        ::close(client->socket);
        clients_.erase(client);
      }
      client = next;
    }
    if (files.front().revents != 0)
      clients_.push_back({::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)});
    wakeWaiter();
  }
}

// Only one that waits: an event loop that does not run would keep the events for good.
void FakeBus::wakeWaiter() {
  if (waits_ && !isAwaiting())
    QMetaObject::invokeMethod(
        qApp, [] {}, Qt::QueuedConnection);
}

bool FakeBus::isAwaiting() const {
  return std::ranges::any_of(clients_, [](const Client& client) { return client.awaited > 0; });
}

bool FakeBus::receive(Client& client) {
  char bytes[4096];
  const auto count = recv(client.socket, bytes, sizeof(bytes), 0);
  if (count <= 0)
    return false;
  client.received.append(bytes, count);
  if (!client.begun && !shakeHands(client))
    return true;
  for (;;) {
    const int size = dbus_message_demarshal_bytes_needed(client.received.constData(),
                                                         static_cast<int>(client.received.size()));
    claim(size >= 0, "we write messages as D-Bus wants them");
    if (size == 0 || size > client.received.size())
      return true;
    const Message message(dbus_message_demarshal(client.received.constData(), size, nullptr));
    claim(message != nullptr, "we write messages as D-Bus wants them");
    client.received.remove(0, size);
    handle(client, *message);
  }
}

// Whether it is over.
bool FakeBus::shakeHands(Client& client) {
  const auto reply = [&client](const char* line) {
    ::send(client.socket, line, std::strlen(line), MSG_NOSIGNAL);
  };
  for (qsizetype end = 0; (end = client.received.indexOf("\r\n")) >= 0;) {
    const QByteArray line = client.received.left(end);
    client.received.remove(0, end + 2);
    if (line.contains("AUTH"))
      reply("OK 0123456789abcdef0123456789abcdef\r\n");
    else if (line == "NEGOTIATE_UNIX_FD")
      reply("ERROR\r\n");
    client.begun = client.begun || line == "BEGIN";
    if (client.begun)
      return true;
  }
  return false;
}

void FakeBus::handle(Client& client, DBusMessage& message) {
  const int type = dbus_message_get_type(&message);
  if (type == DBUS_MESSAGE_TYPE_METHOD_RETURN || type == DBUS_MESSAGE_TYPE_ERROR) {
    --client.awaited;
    return;
  }
  ++received_;
  if (type != DBUS_MESSAGE_TYPE_METHOD_CALL)
    return;
  const Message answer = answerTo(client, message);
  if (dbus_message_get_no_reply(&message))
    return;
  dbus_message_set_destination(answer.get(), client.name.c_str());
  send(client, *answer);
}

Message FakeBus::answerTo(Client& client, DBusMessage& call) {
  Message answer = isForDaemon(call) ? answerAsDaemon(client, call) : nullptr;
  if (answer) {
    dbus_message_set_sender(answer.get(), daemon);
    return answer;
  }
  answer = answerAsProgram(call);
  dbus_message_set_sender(answer.get(), isForDaemon(call) ? daemon : program);
  return answer;
}

// What programs have no part in; the rest is the input's.
Message FakeBus::answerAsDaemon(Client& client, DBusMessage& call) {
  if (isCalled(call, "Hello")) {
    client.name = ":1." + std::to_string(100 + ++names_);
    return answerWithText(call, client.name);
  }
  if (isCalled(call, "GetNameOwner"))
    return answerWithText(call, program);
  if (isCalled(call, "RequestName"))
    return answerWithNumber(call, DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER);
  if (isCalled(call, "AddMatch"))
    noteWatchedPath(call);
  if (isCalled(call, "AddMatch") || isCalled(call, "RemoveMatch"))
    return Message(dbus_message_new_method_return(&call));
  return nullptr;
}

void FakeBus::noteWatchedPath(DBusMessage& call) {
  const char* rule = "";
  dbus_message_get_args(&call, nullptr, DBUS_TYPE_STRING, &rule, DBUS_TYPE_INVALID);
  const std::string text = rule;
  const std::size_t begin = text.find("path='");
  if (begin != std::string::npos)
    watchedPath_ = text.substr(begin + 6, text.find('\'', begin + 6) - begin - 6);
}

Message FakeBus::answerAsProgram(DBusMessage& call) {
  if (input_ == nullptr || input_->remaining_bytes() == 0)
    return errorTo(call, DBUS_ERROR_UNKNOWN_METHOD);
  const int manner = input_->ConsumeIntegralInRange(0, 15);
  if (manner == 0)
    return errorTo(call, DBUS_ERROR_NO_REPLY);  // As where it is too late.
  if (manner == 1)
    return errorTo(call, DBUS_ERROR_UNKNOWN_METHOD);
  const auto wanted = answers_.find(dbus_message_get_member(&call));
  Message answer(dbus_message_new_method_return(&call));
  appendAny(*answer, anySignature(*input_, wanted == answers_.end() ? "v" : wanted->second),
            *input_);
  return answer;
}

}  // namespace tavin::fuzz
