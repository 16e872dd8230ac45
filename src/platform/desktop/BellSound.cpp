#include "platform/desktop/BellSound.h"

#include <canberra.h>

#include <QCoreApplication>
#include <chrono>
#include <future>
#include <memory>

namespace tavin::desktop {
namespace {

constexpr std::chrono::seconds longestSound{5};

struct DestroyContext {
  void operator()(ca_context* context) const { ca_context_destroy(context); }
};
using Context = std::unique_ptr<ca_context, DestroyContext>;

struct DestroyProperties {
  void operator()(ca_proplist* properties) const { ca_proplist_destroy(properties); }
};
using Properties = std::unique_ptr<ca_proplist, DestroyProperties>;

Context makeContext() {
  ca_context* context = nullptr;
  if (ca_context_create(&context) != CA_SUCCESS)
    return nullptr;
  Context owner(context);
  ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Tavin", CA_PROP_APPLICATION_ID,
                          "app.tavin.Tavin", CA_PROP_APPLICATION_ICON_NAME, "app.tavin.Tavin",
                          nullptr);
  return owner;
}

Properties bellProperties() {
  ca_proplist* properties = nullptr;
  if (ca_proplist_create(&properties) != CA_SUCCESS)
    return nullptr;
  ca_proplist_sets(properties, CA_PROP_EVENT_ID, "bell");
  ca_proplist_sets(properties, CA_PROP_EVENT_DESCRIPTION,
                   QCoreApplication::translate("Sound", "Nothing to read").toUtf8().constData());
  ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
  return Properties(properties);
}

void finished(ca_context*, uint32_t, int error, void* result) {
  static_cast<std::promise<int>*>(result)->set_value(error);
}

}  // namespace

bool playBellSound() {
  // Declared before the context: its destruction makes the last call of `finished`.
  std::promise<int> result;
  const Context context = makeContext();
  const Properties properties = bellProperties();
  if (!context || !properties)
    return false;
  auto outcome = result.get_future();
  if (ca_context_play_full(context.get(), 0, properties.get(), finished, &result) != CA_SUCCESS)
    return false;
  // A sound that goes on for longer is heard all the same.
  return outcome.wait_for(longestSound) != std::future_status::ready || outcome.get() == CA_SUCCESS;
}

}  // namespace tavin::desktop
