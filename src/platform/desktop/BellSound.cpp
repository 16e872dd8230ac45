#include "platform/desktop/BellSound.h"

#include <canberra.h>
#include <dlfcn.h>
#include <link.h>

#include <QCoreApplication>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <map>
#include <memory>
#include <mutex>
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

// How the sounds end that are waited for, by their numbers. The library tells one twice where the
// sound server goes at that moment, and may tell it when nobody waits any more.
class Endings {
 public:
  std::future<int> await(std::uint32_t sound) {
    const std::lock_guard lock(mutex_);
    return awaited_[sound].get_future();
  }
  void tell(std::uint32_t sound, int error) {
    const std::lock_guard lock(mutex_);
    if (const auto found = awaited_.find(sound); found != awaited_.end())
      found->second.set_value(error);
    awaited_.erase(sound);
  }

 private:
  std::mutex mutex_;
  std::map<std::uint32_t, std::promise<int>> awaited_;
};

void finished(ca_context*, std::uint32_t sound, int error, void* endings) {
  static_cast<Endings*>(endings)->tell(sound, error);
}

}  // namespace

bool playBellSound() {
  static auto* const endings = new Endings;  // A sound may end when the process does.
  static std::atomic<std::uint32_t> sounds = 0;
  const Context context = makeContext();
  const Properties properties = bellProperties();
  if (!context || !properties)
    return false;
  const std::uint32_t sound = ++sounds;
  auto ending = endings->await(sound);
  const int played =
      ca_context_play_full(context.get(), sound, properties.get(), finished, endings);
  keepPlugInsLoaded();
  if (played != CA_SUCCESS) {
    endings->tell(sound, CA_ERROR_NOTAVAILABLE);
    return false;
  }
  // A sound that goes on for longer is heard all the same.
  return ending.wait_for(longestSound) != std::future_status::ready || ending.get() == CA_SUCCESS;
}

}  // namespace tavin::desktop
