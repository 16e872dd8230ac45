#include "platform/desktop/BellSound.h"

#include <canberra.h>
#include <dlfcn.h>
#include <link.h>

#include <QCoreApplication>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <string_view>

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

// With its context the library unloads the plug-in that plays, of which a thread may still be on
// its way out where the sound server has gone: that would end this process.
void keepPlugInsLoaded() {
  const auto keep = [](dl_phdr_info* object, std::size_t, void*) {
    if (std::string_view(object->dlpi_name).find("/libcanberra-") != std::string_view::npos)
      dlopen(object->dlpi_name, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    return 0;
  };
  dl_iterate_phdr(keep, nullptr);
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

// How a sound ends. The library tells it twice where the sound server goes at that moment.
class Ending {
 public:
  std::future<int> future() { return promise_.get_future(); }
  void tell(int error) {
    if (!told_.test_and_set())
      promise_.set_value(error);
  }

 private:
  std::promise<int> promise_;
  std::atomic_flag told_;
};

void finished(ca_context*, std::uint32_t, int error, void* ending) {
  static_cast<Ending*>(ending)->tell(error);
}

}  // namespace

bool playBellSound() {
  // Declared before the context, whose destruction makes the last call of `finished`.
  Ending ending;
  const Context context = makeContext();
  const Properties properties = bellProperties();
  if (!context || !properties)
    return false;
  auto outcome = ending.future();
  const int played = ca_context_play_full(context.get(), 0, properties.get(), finished, &ending);
  keepPlugInsLoaded();
  if (played != CA_SUCCESS)
    return false;
  // A sound that goes on for longer is heard all the same.
  return outcome.wait_for(longestSound) != std::future_status::ready || outcome.get() == CA_SUCCESS;
}

}  // namespace tavin::desktop
