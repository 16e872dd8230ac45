#pragma once

#include <QByteArray>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "bus/AnyMessage.h"

namespace tavin::fuzz {

// A message bus of our own, the session's and the accessibility bus in one, whose other programs
// say what the input makes them say. Serves in a thread of its own until the process ends; the rest
// is the main thread's.
class FakeBus {
 public:
  // The types that programs answer a method with, by its name, when they behave.
  using Answers = std::map<std::string, std::string>;

  // Becomes the session's bus in the environment.
  static FakeBus& session();

  // From now on the programs answer with this input; with null, or where it has run out, they
  // answer with an error. It must live until the next call of this.
  void answerWith(FuzzedDataProvider* input, Answers answers = {});
  // A program sends this to each connection, as `program` where it names no other sender.
  void emitSignal(Message signal);
  // Calls the connection that was made last, one call after the other; waits for all answers.
  void call(const std::vector<Message>& calls);
  // The path of which signals were asked for last.
  std::string watchedPath();
  // Runs the event loop until nothing is under way any more.
  void settle();

  static constexpr auto program = ":1.66";
  static constexpr auto daemon = "org.freedesktop.DBus";

 private:
  struct Client {
    int socket = -1;
    bool begun = false;  // The handshake is over.
    QByteArray received = {};
    std::string name = {};
    int awaited = 0;  // Our own calls to it that are to be answered.
  };

  FakeBus();
  [[noreturn]] void serve();
  bool receive(Client& client);
  bool shakeHands(Client& client);
  void handle(Client& client, DBusMessage& message);
  Message answerTo(Client& client, DBusMessage& call);
  void noteWatchedPath(DBusMessage& call);
  Message answerAsDaemon(Client& client, DBusMessage& call);
  Message answerAsProgram(DBusMessage& call);
  void send(const Client& client, DBusMessage& message);
  void sendCall(Client& client, DBusMessage& call);
  void awaitAnswers();
  void wakeWaiter();
  bool isAwaiting() const;

  int listener_ = -1;
  int names_ = 0;

  std::mutex mutex_;  // For all that follows.
  std::list<Client> clients_;
  FuzzedDataProvider* input_ = nullptr;
  Answers answers_;
  std::string watchedPath_ = "/";
  dbus_uint32_t serial_ = 0;
  int received_ = 0;    // Messages, the answers to those apart.
  bool waits_ = false;  // The main thread, for answers.
};

}  // namespace tavin::fuzz
