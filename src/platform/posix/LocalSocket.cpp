#include "platform/posix/LocalSocket.h"

#include <cstddef>

namespace tavin::posix {

LocalAddress::LocalAddress(std::string_view name) {
  if (name.empty() || name.size() >= sizeof address_.sun_path)
    return;
  address_.sun_family = AF_UNIX;
  name.copy(address_.sun_path, name.size());
  // A path ends with a zero, an abstract name does not.
  const std::size_t end = name.front() == '\0' ? 0 : 1;
  size_ = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + end);
}

FileDescriptor connectAtOnce(std::string_view name) {
  const LocalAddress address(name);
  FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!address || ::connect(socket.get(), address.get(), address.size()) != 0)
    return FileDescriptor();
  return socket;
}

}  // namespace tavin::posix
