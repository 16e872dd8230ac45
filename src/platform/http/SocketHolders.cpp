#include "platform/http/SocketHolders.h"

#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <utility>

namespace tavin::http {
namespace {

// The main thread waits for it; a busy machine with many processes needs half of it.
constexpr double searchLimit = 0.3;
// A process that is accepting a connection this moment does not show it yet.
constexpr int searches = 4;
constexpr timespec betweenSearches{0, 2'000'000};

}  // namespace

std::optional<SocketHolders::Stranger> SocketHolders::strangerAt(const LoopbackSocket& socket) {
  Stranger stranger;
  if (socket.user != user_ || socket.inode == 0)
    return stranger;
  const std::lock_guard lock(mutex_);
  const Deadline deadline = Deadline::in(searchLimit);
  for (int i = 0; i < searches && stranger.pid == 0 && !deadline.passed(); ++i) {
    if (i > 0)
      ::nanosleep(&betweenSearches, nullptr);
    if (lastHolderHas(socket.inode, deadline) || searchChildren(socket.inode, deadline) ||
        search(socket.inode, deadline, stranger))
      return std::nullopt;
  }
  return stranger;
}

bool SocketHolders::isTrusted(const posix::ProcessFolder& process) const {
  return process.runsAs(user_) && (process.seesOurFiles() || process.isOurChild());
}

void SocketHolders::remember(posix::ProcessFolder process, int descriptor) {
  lastHolder_ = std::move(process);
  lastDescriptors_ = {descriptor, -1};
}

bool SocketHolders::lastHolderHas(std::uint32_t inode, Deadline deadline) {
  if (!lastHolder_)
    return false;
  if (!std::ranges::any_of(lastDescriptors_,
                           [&](int number) { return lastHolder_->holds(number, inode); })) {
    const auto descriptor = lastHolder_->descriptorOf(inode, deadline);
    if (!descriptor)
      return false;
    lastDescriptors_.back() = *descriptor;
  }
  return isTrusted(*lastHolder_);
}

// Before all others: no stranger shall be able to make the search for our own engine long.
bool SocketHolders::searchChildren(std::uint32_t inode, Deadline deadline) {
  for (const pid_t pid : posix::childrenOf(::getpid())) {
    if (deadline.passed())
      return false;
    posix::ProcessFolder process(pid);
    const auto descriptor = process.descriptorOf(inode, deadline);
    if (!descriptor || !isTrusted(process))
      continue;
    remember(std::move(process), *descriptor);
    return true;
  }
  return false;
}

// A socket that a stranger holds too is a stranger's: it may have lent it to a program of ours.
bool SocketHolders::search(std::uint32_t inode, Deadline deadline, Stranger& stranger) {
  std::optional<posix::ProcessFolder> found;
  int foundDescriptor = -1;
  for (const pid_t pid : posix::allProcesses()) {
    if (deadline.passed())
      return false;
    posix::ProcessFolder process(pid);
    const auto descriptor = process.descriptorOf(inode, deadline);
    if (!descriptor)
      continue;
    if (!isTrusted(process)) {
      stranger = {pid, process.name()};
      return false;
    }
    found = std::move(process);
    foundDescriptor = *descriptor;
  }
  if (!found || deadline.passed())
    return false;
  remember(std::move(*found), foundDescriptor);
  return true;
}

}  // namespace tavin::http
