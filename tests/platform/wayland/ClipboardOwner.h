#pragma once

#include <QByteArray>
#include <atomic>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/posix/FileDescriptor.h"
#include "platform/wayland/DataControl.h"
#include "platform/wayland/PipeWriters.h"

namespace tavin::test {

using Types = std::vector<std::pair<std::string, QByteArray>>;

struct OwnerManners {
  std::set<std::string> silentOn = {};  // Types whose pipe is kept open and never written to.
  std::set<std::string> stopsIn = {};   // Types of which half is written, and their pipe kept open.
  std::string changesOn = {};           // Copies something else when this is first asked for,
  Types changesTo = {};                 // namely this, and gives nothing any more of the first.
  std::string diesOn = {};              // Ends when this is asked for, with half of it written.
};

// A program that has copied something, with the manners or the lack of them that a test asks for.
// Runs on a thread with a connection of its own.
class ClipboardOwner {
 public:
  // Owns the clipboard when the constructor returns; a sign of failure is an empty clipboard.
  explicit ClipboardOwner(Types types, OwnerManners manners = {});
  ~ClipboardOwner() { end(); }
  ClipboardOwner(const ClipboardOwner&) = delete;
  ClipboardOwner& operator=(const ClipboardOwner&) = delete;

  void end();
  // Whether another program owns the clipboard now.
  bool isCancelled() const { return cancelled_; }
  // The types that were asked for, in order. After end().
  const std::vector<std::string>& requests() const { return requests_; }

 private:
  void run();
  void offer();
  void send(const std::string& type, posix::FileDescriptor pipe);

  Types types_;
  OwnerManners manners_;
  std::unique_ptr<wayland::Connection> connection_;
  std::unique_ptr<wayland::DataControl> control_;
  std::vector<wayland::Owned<zwlr_data_control_source_v1>> sources_;
  wayland::PipeWriters writers_{10};
  std::vector<posix::FileDescriptor> keptOpen_;
  std::vector<std::string> requests_;
  bool dead_ = false;
  std::atomic<bool> cancelled_ = false;
  std::atomic<bool> stopping_ = false;
  const posix::FileDescriptor wake_;
  std::thread thread_;
};

}  // namespace tavin::test
