#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/wayland/WindowWatch.h"

namespace tavin::wayland {

// The windows as wlroots' compositors tell them. Used by the thread of its connection alone.
class ForeignToplevels final : public WindowSource {
 public:
  // Null where the compositor does not offer it. Both must outlive it.
  static std::unique_ptr<ForeignToplevels> create(Connection& connection, WindowWatch& watch);
  ~ForeignToplevels() override;

  std::string name() const override { return "foreign-toplevel"; }

 private:
  struct Window;
  struct Events;

  ForeignToplevels(Owned<zwlr_foreign_toplevel_manager_v1> manager, WindowWatch& watch);
  void add(zwlr_foreign_toplevel_handle_v1* handle);
  void remove(const Window& window);

  const Owned<zwlr_foreign_toplevel_manager_v1> manager_;
  WindowWatch& watch_;
  std::vector<std::unique_ptr<Window>> windows_;
};

}  // namespace tavin::wayland
