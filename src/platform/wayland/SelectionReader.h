#pragma once

#include <QByteArray>
#include <optional>
#include <string>
#include <vector>

#include "platform/wayland/DataControl.h"
#include "platform/wayland/EventThread.h"

namespace tavin::wayland {

// Reads what other programs offer in the selections. Each byte comes through a pipe from a program
// that may be slow or hostile, so it is the caller's thread that waits, and every wait has a
// deadline. One thread at a time, save noteChange().
class SelectionReader {
 public:
  struct Listing {
    bool offered = false;     // Whether anybody offers anything.
    std::int64_t change = 0;  // Tells this offer from the next.
    std::vector<std::string> types;
  };
  struct Content {
    enum class Outcome { read, late, changed };
    Outcome outcome = Outcome::late;
    QByteArray bytes;
  };

  // Both must outlive it.
  SelectionReader(EventThread& thread, Connection& connection, DataControl& control);

  // To be called on the thread after each change.
  void noteChange(SelectionKind selection);

  // None where the compositor does not answer.
  std::optional<Listing> list(SelectionKind selection, Deadline deadline);
  // The bytes of one type, as many as its program writes by `deadline`; some of them must have come
  // by `begin`. Ends early when the selection is no longer the listed one.
  Content read(SelectionKind selection, const Listing& listing, const std::string& type,
               Deadline deadline, Deadline begin);

 private:
  posix::FileDescriptor request(SelectionKind selection, const Listing& listing,
                                const std::string& type, Deadline deadline);
  int changeOf(SelectionKind selection) const {
    return (selection == SelectionKind::clipboard ? clipboardChanged_ : primaryChanged_).get();
  }

  EventThread& thread_;
  Connection& connection_;
  DataControl& control_;
  // Readable from a change on until the selection is listed again.
  const posix::FileDescriptor clipboardChanged_, primaryChanged_;
};

}  // namespace tavin::wayland
