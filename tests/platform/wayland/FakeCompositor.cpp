#include "platform/wayland/FakeCompositor.h"

#include <unistd.h>

#include <chrono>

#include "fake-input-server-protocol.h"
#include "keystate-server-protocol.h"
#include "wayland-server-protocol.h"
#include "wlr-data-control-unstable-v1-server-protocol.h"

namespace tavin::test {
namespace {

constexpr auto turnMs = 5;
constexpr int keyStatesVersion = 5;
constexpr int fakeInputVersion = 4;
constexpr std::uint32_t keyPressed = 3;
const char* const textType = "text/plain;charset=utf-8";

const wl_interface& managerInterface() {
  static const wl_interface interface = [] {
    wl_interface renamed = zwlr_data_control_manager_v1_interface;
    renamed.name = "ext_data_control_manager_v1";
    renamed.version = 1;
    return renamed;
  }();
  return interface;
}

// KWin's description of it here may be older than the version that tells the modifiers.
const wl_interface& keyStatesInterface() {
  static const wl_interface interface = [] {
    wl_interface newer = org_kde_kwin_keystate_interface;
    newer.version = keyStatesVersion;
    return newer;
  }();
  return interface;
}

void destroyResource(wl_client*, wl_resource* resource) { wl_resource_destroy(resource); }

}  // namespace

struct FakeCompositor::Requests {
  static FakeCompositor& self(wl_resource* resource) {
    return *static_cast<FakeCompositor*>(wl_resource_get_user_data(resource));
  }
  static void offerType(wl_client*, wl_resource* source, const char* type) {
    self(source).source_.types.emplace_back(type);
  }
  static constexpr struct zwlr_data_control_source_v1_interface sourceRequests {
    offerType, destroyResource
  };

  static void receive(wl_client*, wl_resource* offer, const char* type, std::int32_t fd) {
    self(offer).give(type, fd);
  }
  static constexpr struct zwlr_data_control_offer_v1_interface offerRequests {
    receive, destroyResource
  };

  static void setSelection(wl_client*, wl_resource* device, wl_resource* source) {
    auto& compositor = self(device);
    compositor.holdsText_ = false;
    compositor.source_.resource = source;
    for (auto* each : compositor.devices_) compositor.tell(each);
  }
  static void forgetDevice(wl_resource* device) { std::erase(self(device).devices_, device); }
  static void setPrimary(wl_client*, wl_resource*, wl_resource*) {}
  static constexpr struct zwlr_data_control_device_v1_interface deviceRequests {
    setSelection, destroyResource, setPrimary
  };

  static void createSource(wl_client* client, wl_resource* manager, std::uint32_t id) {
    auto* resource = wl_resource_create(client, &zwlr_data_control_source_v1_interface, 1, id);
    self(manager).source_.types.clear();
    wl_resource_set_implementation(resource, &sourceRequests, &self(manager), nullptr);
  }
  static void getDevice(wl_client* client, wl_resource* manager, std::uint32_t id, wl_resource*) {
    auto* resource = wl_resource_create(client, &zwlr_data_control_device_v1_interface, 1, id);
    wl_resource_set_implementation(resource, &deviceRequests, &self(manager), forgetDevice);
    self(manager).devices_.push_back(resource);
    self(manager).tell(resource);
  }
  static constexpr struct zwlr_data_control_manager_v1_interface managerRequests {
    createSource, getDevice, destroyResource
  };

  static void fetchStates(wl_client*, wl_resource* states) {
    for (std::uint32_t key = 0; key < 8; ++key) {
      const bool held = key != 0 && key == self(states).held_;
      org_kde_kwin_keystate_send_stateChanged(states, key, held ? keyPressed : 0);
    }
  }
  static constexpr struct org_kde_kwin_keystate_interface keyStatesRequests {
    fetchStates, destroyResource
  };
  static void bindKeyStates(wl_client* client, void* self, std::uint32_t version,
                            std::uint32_t id) {
    auto* resource =
        wl_resource_create(client, &keyStatesInterface(), static_cast<int>(version), id);
    wl_resource_set_implementation(resource, &keyStatesRequests, self, nullptr);
  }

  static void authenticate(wl_client*, wl_resource*, const char*, const char*) {}
  static constexpr struct org_kde_kwin_fake_input_interface fakeInputRequests = [] {
    struct org_kde_kwin_fake_input_interface requests {};
    requests.authenticate = authenticate;
    return requests;
  }();
  static void bindFakeInput(wl_client* client, void* self, std::uint32_t version,
                            std::uint32_t id) {
    auto* resource = wl_resource_create(client, &org_kde_kwin_fake_input_interface,
                                        static_cast<int>(version), id);
    wl_resource_set_implementation(resource, &fakeInputRequests, self, nullptr);
  }

  static void bindManager(wl_client* client, void* self, std::uint32_t version, std::uint32_t id) {
    auto* resource = wl_resource_create(client, &managerInterface(), static_cast<int>(version), id);
    wl_resource_set_implementation(resource, &managerRequests, self, nullptr);
  }
  static void bindSeat(wl_client* client, void*, std::uint32_t version, std::uint32_t id) {
    wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
  }
};

FakeCompositor::FakeCompositor(QByteArray text)
    : text_(std::move(text)), display_(wl_display_create()) {
  qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
  qputenv("WAYLAND_DISPLAY", wl_display_add_socket_auto(display_));
  wl_global_create(display_, &wl_seat_interface, 1, this, Requests::bindSeat);
  wl_global_create(display_, &managerInterface(), 1, this, Requests::bindManager);
  wl_global_create(display_, &keyStatesInterface(), keyStatesVersion, this,
                   Requests::bindKeyStates);
  wl_global_create(display_, &org_kde_kwin_fake_input_interface, fakeInputVersion, this,
                   Requests::bindFakeInput);
  thread_ = std::thread([this] {
    while (!stopping_) {
      if (hanging_) {
        std::this_thread::sleep_for(std::chrono::milliseconds(turnMs));
        continue;
      }
      wl_event_loop_dispatch(wl_display_get_event_loop(display_), turnMs);
      wl_display_flush_clients(display_);
    }
  });
}

void FakeCompositor::end() {
  if (!thread_.joinable())
    return;
  stopping_ = true;
  thread_.join();
  wl_display_destroy_clients(display_);
  wl_display_destroy(display_);
}

// What the clipboard holds now.
void FakeCompositor::tell(wl_resource* device) {
  if (!holdsText_ && !source_.resource) {
    zwlr_data_control_device_v1_send_selection(device, nullptr);
    return;
  }
  auto* offer = wl_resource_create(wl_resource_get_client(device),
                                   &zwlr_data_control_offer_v1_interface, 1, 0);
  wl_resource_set_implementation(offer, &Requests::offerRequests, this, nullptr);
  zwlr_data_control_device_v1_send_data_offer(device, offer);
  for (const auto& type : holdsText_ ? std::vector<std::string>{textType} : source_.types)
    zwlr_data_control_offer_v1_send_offer(offer, type.c_str());
  zwlr_data_control_device_v1_send_selection(device, offer);
}

void FakeCompositor::give(const char* type, int pipe) {
  if (source_.resource)
    zwlr_data_control_source_v1_send_send(source_.resource, type, pipe);
  else if (holdsText_ && write(pipe, text_.constData(), static_cast<std::size_t>(text_.size())) < 0)
    std::perror("fake compositor");
  close(pipe);
}

}  // namespace tavin::test
