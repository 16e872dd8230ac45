#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {

// Where a local socket listens: a path, or an abstract name, which begins with a zero. Empty for a
// name that is none or too long.
class LocalAddress {
 public:
  explicit LocalAddress(std::string_view name);
  explicit operator bool() const { return size_ != 0; }
  const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address_); }
  socklen_t size() const { return size_; }

 private:
  sockaddr_un address_{};
  socklen_t size_ = 0;
};

// A stream that never blocks, connected at once; empty where that cannot be.
FileDescriptor connectAtOnce(std::string_view name);

}  // namespace tavin::posix
