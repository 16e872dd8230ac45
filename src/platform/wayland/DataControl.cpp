#include "platform/wayland/DataControl.h"

#include <algorithm>
#include <iterator>

#include "platform/wayland/Listener.h"

namespace tavin::wayland {
namespace {

// No program offers as many; a hostile one shall not fill the memory.
constexpr std::size_t mostTypes = 500;

struct Flavour {
  const char* name;
  const wl_interface& manager;
  std::uint32_t highestVersion;
};

// On the wire an interface has a name only where it is bound.
const wl_interface& extManager() {
  static const wl_interface interface = [] {
    wl_interface renamed = zwlr_data_control_manager_v1_interface;
    renamed.name = "ext_data_control_manager_v1";
    renamed.version = 1;
    return renamed;
  }();
  return interface;
}

void addType(std::vector<std::string>& types, const char* type) {
  if (types.size() < mostTypes)
    types.emplace_back(type);
}

constexpr zwlr_data_control_offer_v1_listener offerEvents{.offer = calls<addType>};

}  // namespace

std::unique_ptr<DataControl> DataControl::create(Connection& connection) {
  const Flavour flavours[] = {
      {"ext-data-control", extManager(), 1},
      {"wlr-data-control", zwlr_data_control_manager_v1_interface, 2},
  };
  if (!connection.seat())
    return nullptr;
  for (const auto& [name, interface, highest] : flavours) {
    const auto version = std::min(highest, connection.offered(interface.name));
    if (auto manager = connection.bind<zwlr_data_control_manager_v1>(interface, highest)) {
      const std::string versioned = std::string(name) + ' ' + std::to_string(version);
      return std::unique_ptr<DataControl>(
          new DataControl(std::move(manager), connection.seat(), versioned));
    }
  }
  return nullptr;
}

DataControl::DataControl(Owned<zwlr_data_control_manager_v1> manager, wl_seat* seat,
                         std::string name)
    : name_(std::move(name)),
      manager_(std::move(manager)),
      device_(zwlr_data_control_manager_v1_get_data_device(manager_.get(), seat)) {
  static constexpr zwlr_data_control_device_v1_listener events{
      .data_offer = calls<&DataControl::announce>,
      .selection = calls<&DataControl::take<SelectionKind::clipboard>>,
      .finished = calls<&DataControl::finish>,
      .primary_selection = calls<&DataControl::take<SelectionKind::primary>>,
  };
  zwlr_data_control_device_v1_add_listener(device_.get(), &events, this);
}

const Offer* DataControl::offer(SelectionKind selection) const {
  return state(selection).offer.get();
}

Owned<zwlr_data_control_source_v1> DataControl::createSource() {
  return Owned<zwlr_data_control_source_v1>(
      device_ ? zwlr_data_control_manager_v1_create_data_source(manager_.get()) : nullptr);
}

void DataControl::setClipboard(zwlr_data_control_source_v1* source) {
  if (device_)
    zwlr_data_control_device_v1_set_selection(device_.get(), source);
}

void DataControl::announce(zwlr_data_control_offer_v1* proxy) {
  auto offer = std::make_unique<Offer>();
  offer->proxy.reset(proxy);
  zwlr_data_control_offer_v1_add_listener(proxy, &offerEvents, &offer->types);
  announced_.push_back(std::move(offer));
}

template <SelectionKind selection>
void DataControl::take(zwlr_data_control_offer_v1* proxy) {
  State& current = selection == SelectionKind::clipboard ? clipboard_ : primary_;
  const auto found = std::find_if(announced_.begin(), announced_.end(), [proxy](const auto& offer) {
    return proxy && offer->proxy.get() == proxy;
  });
  current.offer = found == announced_.end() ? nullptr : std::move(*found);
  if (found != announced_.end())
    announced_.erase(found);
  ++current.changes;
  if (changed)
    changed(selection);
}

void DataControl::finish() {
  device_.reset();
  announced_.clear();
  clipboard_.offer.reset();
  primary_.offer.reset();
}

}  // namespace tavin::wayland
