#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/wayland/Connection.h"

namespace tavin::wayland {

enum class SelectionKind { clipboard, primary };

// What a program offers in a selection.
struct Offer {
  Owned<zwlr_data_control_offer_v1> proxy;
  std::vector<std::string> types;  // In the program's order.
};

// The seat's selections through data control, which needs no window and no focus. Two protocols
// have it that are the same but for their names: wlr-data-control and ext-data-control. Used by the
// thread of its connection alone.
class DataControl {
 public:
  // Null where the compositor has neither. `connection` must outlive it.
  static std::unique_ptr<DataControl> create(Connection& connection);

  // The protocol and its version, for the log.
  const std::string& name() const { return name_; }
  // Called after each change of a selection.
  std::function<void(SelectionKind)> changed;

  // Null where nobody offers anything, or nothing is known.
  const Offer* offer(SelectionKind selection) const;
  // How often the selection was taken, replaced or cleared, as far as the compositor has told.
  std::int64_t changes(SelectionKind selection) const { return state(selection).changes; }
  // False after the compositor took the seat away: then nothing is known any more.
  bool isAlive() const { return device_ != nullptr; }

  // Null after the compositor took the seat away.
  Owned<zwlr_data_control_source_v1> createSource();
  // Offers `source` in the clipboard; with null, clears it.
  void setClipboard(zwlr_data_control_source_v1* source);

 private:
  struct State {
    std::unique_ptr<Offer> offer;
    std::int64_t changes = 0;
  };

  DataControl(Owned<zwlr_data_control_manager_v1> manager, wl_seat* seat, std::string name);
  const State& state(SelectionKind selection) const {
    return selection == SelectionKind::clipboard ? clipboard_ : primary_;
  }
  void announce(zwlr_data_control_offer_v1* proxy);
  template <SelectionKind selection>
  void take(zwlr_data_control_offer_v1* proxy);
  void finish();

  const std::string name_;
  const Owned<zwlr_data_control_manager_v1> manager_;
  Owned<zwlr_data_control_device_v1> device_;
  std::vector<std::unique_ptr<Offer>> announced_;  // Not yet said to be in a selection.
  State clipboard_, primary_;
};

}  // namespace tavin::wayland
