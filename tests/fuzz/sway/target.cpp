// What answers on the socket that SWAYSOCK names.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>
#include <cstring>
#include <mutex>
#include <thread>

#include "Claim.h"
#include "platform/wayland/SwayTree.h"

using namespace tavin;

namespace {

constexpr std::size_t headerSize = 14;

// Reads one question on each connection and gives the answer that was set. Never ends.
class Server {
 public:
  Server() : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const QByteArray path = folder_.filePath("sway").toUtf8();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    fuzz::claim(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
                    listen(socket_, 1) == 0,
                "the socket is there");
    qputenv("SWAYSOCK", path);
    std::thread([this] { serve(); }).detach();
  }
  void setAnswer(QByteArray answer) {
    const std::lock_guard lock(mutex_);
    answer_ = std::move(answer);
  }

 private:
  void serve() {
    for (int client = 0; (client = accept(socket_, nullptr, nullptr)) >= 0; ::close(client)) {
      char question[200];
      QByteArray answer;
      if (recv(client, question, sizeof(question), 0) > 0) {
        const std::lock_guard lock(mutex_);
        answer = answer_;
      }
      send(client, answer.constData(), static_cast<std::size_t>(answer.size()), MSG_NOSIGNAL);
    }
  }

  QTemporaryDir folder_;
  const int socket_;
  std::mutex mutex_;
  QByteArray answer_;
};

QByteArray inEnvelope(const QByteArray& payload) {
  const std::uint32_t numbers[] = {static_cast<std::uint32_t>(payload.size()), 4};
  static_assert(sizeof(numbers) + 6 == headerSize);
  return "i3-ipc" + QByteArray(reinterpret_cast<const char*>(numbers), sizeof(numbers)) + payload;
}

}  // namespace

// A tree begins with a brace and gets the envelope that it needs; anything else is sent as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto* const server = new Server;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  server->setAnswer(bytes.startsWith('{') ? inEnvelope(bytes) : bytes);
  const auto tree = wayland::readSwayTree(Deadline::in(5));
  if (!tree)
    return 0;
  fuzz::claim(tree->focusedProcess == 0 || tree->processes.contains(tree->focusedProcess),
              "the focused process has a window");
  fuzz::claim(tree->processes.empty() || *tree->processes.begin() > 0, "processes are positive");
  wayland::focusSwayWindow(tree->lastFocused, Deadline::in(5));
  return 0;
}
