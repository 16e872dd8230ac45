#include "platform/http/ListenerOwner.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <cstring>

namespace tavin::http {
namespace {

// TCP_LISTEN of the kernel's state numbers.
constexpr unsigned listenState = 10;

// Whether a listener on this address takes connections to 127.0.0.1.
bool takesLoopback(std::uint8_t family, const inet_diag_sockid& id) {
  const auto isOurs = [](std::uint32_t address) {
    return address == htonl(INADDR_ANY) || address == htonl(INADDR_LOOPBACK);
  };
  if (family == AF_INET)
    return isOurs(id.idiag_src[0]);
  if (id.idiag_src[0] != 0 || id.idiag_src[1] != 0)
    return false;
  // All addresses, or an IPv4 one in IPv6's clothes.
  const bool any = id.idiag_src[2] == 0 && id.idiag_src[3] == 0;
  return any || (id.idiag_src[2] == htonl(0xffff) && isOurs(id.idiag_src[3]));
}

class DiagSocket {
 public:
  DiagSocket() : fd_(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG)) {
    const timeval limit{.tv_sec = 0, .tv_usec = 100'000};
    ::setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  }
  ~DiagSocket() {
    if (fd_ >= 0)
      ::close(fd_);
  }
  DiagSocket(const DiagSocket&) = delete;
  DiagSocket& operator=(const DiagSocket&) = delete;

  bool askForListeners(std::uint8_t family) const {
    struct {
      nlmsghdr header;
      inet_diag_req_v2 body;
    } request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.body.sdiag_family = family;
    request.body.sdiag_protocol = IPPROTO_TCP;
    request.body.idiag_states = 1U << listenState;
    return ::send(fd_, &request, sizeof request, 0) == sizeof request;
  }

  // Appends the owners of those on `port`; false when the answer breaks off.
  bool readOwners(std::uint16_t port, std::vector<uid_t>& owners) const {
    alignas(nlmsghdr) std::array<char, 16384> buffer;
    while (true) {
      auto length = ::recv(fd_, buffer.data(), buffer.size(), 0);
      if (length <= 0)
        return false;
      auto* header = reinterpret_cast<nlmsghdr*>(buffer.data());
      for (; NLMSG_OK(header, length); header = NLMSG_NEXT(header, length)) {
        if (header->nlmsg_type == NLMSG_DONE)
          return true;
        if (header->nlmsg_type == NLMSG_ERROR)
          return false;
        inet_diag_msg message;
        std::memcpy(&message, NLMSG_DATA(header), sizeof message);
        if (ntohs(message.id.idiag_sport) == port &&
            takesLoopback(message.idiag_family, message.id))
          owners.push_back(message.idiag_uid);
      }
    }
  }

 private:
  int fd_;
};

}  // namespace

std::optional<std::vector<uid_t>> listenerOwners(std::uint16_t port) {
  const DiagSocket socket;
  std::vector<uid_t> owners;
  // An IPv6 socket may take IPv4 connections too.
  for (const std::uint8_t family : {AF_INET, AF_INET6})
    if (!socket.askForListeners(family) || !socket.readOwners(port, owners))
      return std::nullopt;
  return owners;
}

}  // namespace tavin::http
