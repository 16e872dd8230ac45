#pragma once

#include <QByteArray>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Deadline.h"
#include "platform/x11/Connection.h"

namespace tavin::x11 {

// What came of asking a selection's owner for one target.
struct Conversion {
  enum class Outcome { converted, refused, late, ownerChanged };
  Outcome outcome = Outcome::late;
  xcb_atom_t type = XCB_ATOM_NONE;
  std::uint8_t format = 8;
  QByteArray bytes;  // As they stood in the property: units of `format` bits, native byte order.
};

// Reads selections (CLIPBOARD, PRIMARY) from their owners, in one piece or by INCR, on a connection
// of its own. Every wait has a deadline. Work queue only.
class SelectionReader {
 public:
  // Null without a display or its XFixes extension.
  static std::unique_ptr<SelectionReader> create();
  ~SelectionReader();

  const Connection& connection() const { return *connection_; }
  xcb_window_t owner(xcb_atom_t selection) const { return connection_->ownerOf(selection); }
  Conversion convert(xcb_atom_t selection, xcb_atom_t target, Deadline deadline) {
    return convert(selection, target, deadline, deadline);
  }
  // The same, of which some must have come by `begin`. What is late keeps the bytes that came.
  Conversion convert(xcb_atom_t selection, xcb_atom_t target, Deadline deadline, Deadline begin);
  // The names of atoms, in one exchange with the server; empty for what is no atom.
  std::vector<std::string> atomNames(const std::vector<xcb_atom_t>& atoms);

  // While one of these lives, a conversion ends as soon as the selection changes its owner.
  class Watch {
   public:
    Watch(SelectionReader& reader, xcb_atom_t selection);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    // Whether it has changed its owner by now.
    bool changed();

   private:
    SelectionReader& reader_;
    xcb_atom_t selection_;
  };

 private:
  SelectionReader(std::unique_ptr<Connection> connection, std::uint8_t fixesEvent);
  // The next event before the deadline; null when there is none or the watched selection changed.
  Reply<xcb_generic_event_t> nextEvent(Deadline deadline);
  bool waitForProperty(xcb_window_t window, Deadline deadline);
  Conversion takeProperty(xcb_window_t window);
  Conversion readIncrementally(xcb_window_t window, Deadline deadline, Deadline begin);
  Conversion failure() const;

  std::unique_ptr<Connection> connection_;
  const std::uint8_t fixesEvent_;
  xcb_atom_t property_;
  xcb_atom_t incr_;
  xcb_window_t watchWindow_ = XCB_WINDOW_NONE;
  bool watchedChanged_ = false;
};

}  // namespace tavin::x11
