#include "platform/wayland/PipeWriters.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

namespace tavin::wayland {
namespace {

// A program that opens pipes and reads none of them shall not use up our open files.
constexpr std::size_t mostTransfers = 100;

}  // namespace

void PipeWriters::begin(posix::FileDescriptor pipe, QByteArray data) {
  fcntl(pipe.get(), F_SETFL, fcntl(pipe.get(), F_GETFL) | O_NONBLOCK);
  if (transfers_.size() == mostTransfers)
    transfers_.pop_front();
  transfers_.push_back({std::move(pipe), std::move(data), 0, Deadline::in(idleSeconds_)});
}

void PipeWriters::addFiles(std::vector<pollfd>& files) const {
  for (const auto& transfer : transfers_) files.push_back({transfer.pipe.get(), POLLOUT, 0});
}

std::optional<Deadline> PipeWriters::nextDeadline() const {
  std::optional<Deadline> next;
  for (const auto& transfer : transfers_) {
    if (!next || transfer.deadline < *next)
      next = transfer.deadline;
  }
  return next;
}

void PipeWriters::proceed() {
  std::erase_if(transfers_, [this](Transfer& transfer) {
    return !writeSome(transfer) || transfer.deadline.passed();
  });
}

// Whether there is more to write.
bool PipeWriters::writeSome(Transfer& transfer) const {
  while (transfer.written < transfer.data.size()) {
    const auto count = write(transfer.pipe.get(), transfer.data.constData() + transfer.written,
                             static_cast<std::size_t>(transfer.data.size() - transfer.written));
    if (count < 0)
      return errno == EAGAIN || errno == EINTR;
    transfer.written += count;
    transfer.deadline = Deadline::in(idleSeconds_);
  }
  return false;
}

}  // namespace tavin::wayland
