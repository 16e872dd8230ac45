#pragma once

#include <memory>

#include "ext-idle-notify-v1-client-protocol.h"
#include "fake-input-client-protocol.h"
#include "idle-client-protocol.h"
#include "keystate-client-protocol.h"
#include "plasma-window-management-client-protocol.h"
#include "virtual-keyboard-unstable-v1-client-protocol.h"
#include "wayland-client.h"
#include "wlr-data-control-unstable-v1-client-protocol.h"
#include "wlr-foreign-toplevel-management-unstable-v1-client-protocol.h"

namespace tavin::wayland {

// Tells the compositor that one of its objects is no longer wanted, and releases it here.
struct DestroyProxy {
  void operator()(wl_registry* p) const { wl_registry_destroy(p); }
  void operator()(wl_callback* p) const { wl_callback_destroy(p); }
  void operator()(wl_keyboard* p) const { wl_keyboard_destroy(p); }
  void operator()(wl_seat* p) const { wl_seat_destroy(p); }
  void operator()(zwlr_data_control_manager_v1* p) const {
    zwlr_data_control_manager_v1_destroy(p);
  }
  void operator()(zwlr_data_control_device_v1* p) const { zwlr_data_control_device_v1_destroy(p); }
  void operator()(zwlr_data_control_source_v1* p) const { zwlr_data_control_source_v1_destroy(p); }
  void operator()(zwlr_data_control_offer_v1* p) const { zwlr_data_control_offer_v1_destroy(p); }
  void operator()(zwlr_foreign_toplevel_manager_v1* p) const {
    zwlr_foreign_toplevel_manager_v1_destroy(p);
  }
  void operator()(zwlr_foreign_toplevel_handle_v1* p) const {
    zwlr_foreign_toplevel_handle_v1_destroy(p);
  }
  void operator()(zwp_virtual_keyboard_manager_v1* p) const {
    zwp_virtual_keyboard_manager_v1_destroy(p);
  }
  void operator()(zwp_virtual_keyboard_v1* p) const { zwp_virtual_keyboard_v1_destroy(p); }
  void operator()(org_kde_kwin_fake_input* p) const { org_kde_kwin_fake_input_destroy(p); }
  void operator()(ext_idle_notifier_v1* p) const { ext_idle_notifier_v1_destroy(p); }
  void operator()(ext_idle_notification_v1* p) const { ext_idle_notification_v1_destroy(p); }
  void operator()(org_kde_kwin_idle* p) const { org_kde_kwin_idle_destroy(p); }
  void operator()(org_kde_kwin_idle_timeout* p) const { org_kde_kwin_idle_timeout_release(p); }
  void operator()(org_kde_kwin_keystate* p) const { org_kde_kwin_keystate_destroy(p); }
  void operator()(org_kde_plasma_window_management* p) const {
    org_kde_plasma_window_management_destroy(p);
  }
  void operator()(org_kde_plasma_window* p) const { org_kde_plasma_window_destroy(p); }
};

// An object of the compositor's, owned here. The connection must outlive it.
template <typename T>
using Owned = std::unique_ptr<T, DestroyProxy>;

}  // namespace tavin::wayland
