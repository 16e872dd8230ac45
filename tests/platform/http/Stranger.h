#pragma once

#include <sys/types.h>

#include <cstdint>

namespace tavin::test {

// Another process of this user that listens on a loopback port of its own, and lives as long as
// this object.
class Stranger {
 public:
  enum class Place {
    here,             // In our namespaces.
    otherNamespaces,  // In user and mount namespaces of its own, as in a sandbox.
    ourChild,         // The same, as a child of this process.
    hidden,           // In such namespaces, and not to be looked into.
    lends,            // In such namespaces; a process like `here` holds the listener as well.
    lendsHere,        // In our namespaces, and so is who else holds the listener.
  };

  explicit Stranger(Place place);
  ~Stranger();
  Stranger(const Stranger&) = delete;
  Stranger& operator=(const Stranger&) = delete;

  pid_t pid() const { return pid_; }
  std::uint16_t port() const { return port_; }
  bool wasConnectedTo() const;

 private:
  bool isChild_;  // And so ours to collect.
  pid_t pid_ = -1;
  std::uint16_t port_ = 0;
  int life_ = -1;  // Its end ends the process.
};

}  // namespace tavin::test
