#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tavin::test {

// A server on a loopback port, a free one unless told, that treats each connection as the test
// says, one at a time.
class RawServer {
 public:
  // A connection whose request has been read.
  class Peer {
   public:
    Peer(int socket, QByteArray received, const std::atomic<bool>& stopping)
        : request(std::move(received)), socket_(socket), stopping_(stopping) {}
    // False when the other side is gone.
    bool send(const QByteArray& bytes) const;
    void answer(const QByteArray& body, const QByteArray& status = "200 OK") const;
    // Keeps the connection open, silent, until the other side closes it or the test ends.
    void waitForClose() const;
    const QByteArray request;

   private:
    const int socket_;
    const std::atomic<bool>& stopping_;
  };

  explicit RawServer(std::function<void(const Peer&)> serve, const char* host = "127.0.0.1",
                     quint16 port = 0);
  ~RawServer();

  quint16 port() const { return port_; }
  QString url(const QString& path = QStringLiteral("/status")) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path);
  }
  // The requests that came, in order.
  std::vector<QByteArray> requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
  }

 private:
  void run();
  QByteArray readRequest(int socket) const;

  const std::function<void(const Peer&)> serve_;
  int listener_;
  quint16 port_ = 0;
  std::atomic<bool> stopping_ = false;
  mutable std::mutex mutex_;
  std::vector<QByteArray> requests_;
  std::thread thread_;
};

}  // namespace tavin::test
