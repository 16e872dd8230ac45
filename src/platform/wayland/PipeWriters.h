#pragma once

#include <poll.h>

#include <QByteArray>
#include <list>
#include <optional>
#include <vector>

#include "platform/Deadline.h"
#include "platform/posix/FileDescriptor.h"

namespace tavin::wayland {

// Gives data to programs through pipes, as fast as each of them takes it. One that takes nothing
// for `idleSeconds` gets no more. Used by one thread, which must block SIGPIPE.
class PipeWriters {
 public:
  explicit PipeWriters(double idleSeconds) : idleSeconds_(idleSeconds) {}

  void begin(posix::FileDescriptor pipe, QByteArray data);
  void addFiles(std::vector<pollfd>& files) const;
  std::optional<Deadline> nextDeadline() const;
  // Writes what can be written without waiting, and closes the pipes that are done with.
  void proceed();

 private:
  struct Transfer {
    posix::FileDescriptor pipe;
    QByteArray data;
    qsizetype written = 0;
    Deadline deadline;
  };
  bool writeSome(Transfer& transfer) const;

  const double idleSeconds_;
  std::list<Transfer> transfers_;
};

}  // namespace tavin::wayland
