#include "platform/wayland/ClipboardOwner.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <csignal>

namespace tavin::test {

ClipboardOwner::ClipboardOwner(Types types, OwnerManners manners)
    : types_(std::move(types)),
      manners_(std::move(manners)),
      connection_(wayland::Connection::open(Deadline::in(10))),
      control_(connection_ ? wayland::DataControl::create(*connection_) : nullptr),
      wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  std::signal(SIGPIPE, SIG_IGN);
  if (!control_)
    return;
  offer();
  connection_->roundTrip(Deadline::in(10));
  thread_ = std::thread([this] { run(); });
}

void ClipboardOwner::end() {
  if (!thread_.joinable())
    return;
  stopping_ = true;
  eventfd_write(wake_.get(), 1);
  thread_.join();
  sources_.clear();
  control_.reset();
  connection_.reset();
}

void ClipboardOwner::offer() {
  static constexpr zwlr_data_control_source_v1_listener listener{
      .send =
          [](void* self, zwlr_data_control_source_v1*, const char* type, std::int32_t fd) {
            static_cast<ClipboardOwner*>(self)->send(type, posix::FileDescriptor(fd));
          },
      .cancelled =
          [](void* self, zwlr_data_control_source_v1* source) {
            auto* owner = static_cast<ClipboardOwner*>(self);
            owner->cancelled_ = owner->sources_.back().get() == source;
          }};
  auto source = control_->createSource();
  zwlr_data_control_source_v1_add_listener(source.get(), &listener, this);
  for (const auto& [type, bytes] : types_)
    zwlr_data_control_source_v1_offer(source.get(), type.c_str());
  control_->setClipboard(source.get());
  sources_.push_back(std::move(source));
}

void ClipboardOwner::run() {
  std::vector<pollfd> files;
  bool connected = true;
  while (!stopping_ && !dead_ && connected) {
    writers_.proceed();
    files.assign(1, {wake_.get(), POLLIN, 0});
    writers_.addFiles(files);
    connected = connection_->turn(files, -1);
  }
  if (dead_) {
    sources_.clear();
    control_.reset();
    connection_.reset();
  }
}

void ClipboardOwner::send(const std::string& type, posix::FileDescriptor pipe) {
  requests_.push_back(type);
  if (manners_.silentOn.contains(type)) {
    keptOpen_.push_back(std::move(pipe));
    return;
  }
  if (manners_.changesOn == type) {
    manners_.changesOn.clear();
    types_ = manners_.changesTo;
    offer();
    return;
  }
  for (const auto& [name, bytes] : types_) {
    if (name != type)
      continue;
    if (manners_.stopsIn.contains(type)) {
      [[maybe_unused]] const auto written = write(pipe.get(), bytes.constData(), bytes.size() / 2);
      keptOpen_.push_back(std::move(pipe));
      return;
    }
    dead_ = manners_.diesOn == type;
    writers_.begin(std::move(pipe), dead_ ? bytes.left(bytes.size() / 2) : bytes);
    if (dead_)
      writers_.proceed();
    return;
  }
}

}  // namespace tavin::test
