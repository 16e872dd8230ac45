#include "platform/wayland/SelectionReader.h"

#include <fcntl.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>

namespace tavin::wayland {
namespace {

using Outcome = SelectionReader::Content::Outcome;

constexpr qsizetype largestContent = 512 << 20;
constexpr qsizetype pieceSize = 1 << 16;

// Reads what has come. None while more may follow.
std::optional<Outcome> readSome(int pipe, QByteArray& bytes) {
  while (bytes.size() < largestContent) {
    const qsizetype before = bytes.size();
    bytes.resize(before + pieceSize);
    const auto count = ::read(pipe, bytes.data() + before, pieceSize);
    const int error = errno;
    bytes.resize(before + std::max<qsizetype>(count, 0));
    if (count == 0)
      return Outcome::read;
    if (count < 0)
      return error == EAGAIN || error == EINTR ? std::nullopt : std::optional(Outcome::late);
  }
  return Outcome::late;
}

}  // namespace

SelectionReader::SelectionReader(EventThread& thread, Connection& connection, DataControl& control)
    : thread_(thread),
      connection_(connection),
      control_(control),
      clipboardChanged_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      primaryChanged_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void SelectionReader::noteChange(SelectionKind selection) { eventfd_write(changeOf(selection), 1); }

std::optional<SelectionReader::Listing> SelectionReader::list(SelectionKind selection,
                                                              Deadline deadline) {
  const auto listing =
      thread_.ask<std::optional<Listing>>(deadline, [=, this]() -> std::optional<Listing> {
        if (!connection_.roundTrip(deadline) || !control_.isAlive())
          return std::nullopt;
        eventfd_t changes = 0;
        eventfd_read(changeOf(selection), &changes);
        const Offer* offer = control_.offer(selection);
        return Listing{offer != nullptr, control_.changes(selection),
                       offer ? offer->types : std::vector<std::string>{}};
      });
  return listing.value_or(std::nullopt);
}

// The end of the pipe that the program's bytes come out of; empty where the selection has changed.
posix::FileDescriptor SelectionReader::request(SelectionKind selection, const Listing& listing,
                                               const std::string& type, Deadline deadline) {
  auto pipe = thread_.ask<posix::FileDescriptor>(
      deadline, [this, selection, type, change = listing.change] {
        const Offer* offer = control_.offer(selection);
        int ends[2];
        if (!offer || control_.changes(selection) != change || pipe2(ends, O_CLOEXEC) != 0)
          return posix::FileDescriptor();
        posix::FileDescriptor readEnd(ends[0]);
        const posix::FileDescriptor writeEnd(ends[1]);
        // Ours alone: many programs cannot deal with a pipe that is full.
        fcntl(readEnd.get(), F_SETFL, O_NONBLOCK);
        zwlr_data_control_offer_v1_receive(offer->proxy.get(), type.c_str(), writeEnd.get());
        return readEnd;
      });
  return pipe ? std::move(*pipe) : posix::FileDescriptor();
}

SelectionReader::Content SelectionReader::read(SelectionKind selection, const Listing& listing,
                                               const std::string& type, Deadline deadline,
                                               Deadline begin) {
  Content content;
  const auto pipe = request(selection, listing, type, deadline);
  if (!pipe) {
    content.outcome = deadline.passed() ? Outcome::late : Outcome::changed;
    return content;
  }
  const auto until = [&] { return content.bytes.isEmpty() ? begin : deadline; };
  while (!until().passed()) {
    pollfd files[] = {{pipe.get(), POLLIN, 0}, {changeOf(selection), POLLIN, 0}};
    poll(files, 2, until().remainingMs());
    if (files[1].revents != 0) {
      content.outcome = Outcome::changed;
      return content;
    }
    if (const auto outcome = readSome(pipe.get(), content.bytes)) {
      content.outcome = *outcome;
      return content;
    }
  }
  return content;
}

}  // namespace tavin::wayland
