#include "platform/http/LoopbackSocket.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/http/SocketTable.h"
#include "platform/posix/FileDescriptor.h"

namespace tavin::http {
namespace {

struct Question {
  nlmsghdr header;
  inet_diag_req_v2 body;
};

// For the one socket that the kernel itself would hand such a packet to: it knows best which
// listeners take connections to this address.
Question questionAbout(std::uint16_t to, std::uint16_t from) {
  Question question{};
  question.header.nlmsg_len = sizeof question;
  question.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
  question.header.nlmsg_flags = NLM_F_REQUEST;
  question.body.sdiag_family = AF_INET;
  question.body.sdiag_protocol = IPPROTO_TCP;
  question.body.idiag_states = ~0U;
  question.body.id.idiag_sport = htons(to);
  question.body.id.idiag_dport = htons(from);
  question.body.id.idiag_src[0] = htonl(INADDR_LOOPBACK);
  question.body.id.idiag_dst[0] = htonl(INADDR_LOOPBACK);
  question.body.id.idiag_cookie[0] = INET_DIAG_NOCOOKIE;
  question.body.id.idiag_cookie[1] = INET_DIAG_NOCOOKIE;
  return question;
}

SocketAnswer decode(const char* message, std::size_t length) {
  nlmsghdr header;
  if (length < sizeof header)
    return {.told = false, .socket = {}};
  std::memcpy(&header, message, sizeof header);
  if (header.nlmsg_type == NLMSG_ERROR && length >= NLMSG_LENGTH(sizeof(nlmsgerr))) {
    nlmsgerr error;
    std::memcpy(&error, message + NLMSG_HDRLEN, sizeof error);
    return {.told = error.error == -ENOENT, .socket = {}};
  }
  if (header.nlmsg_type != SOCK_DIAG_BY_FAMILY || length < NLMSG_LENGTH(sizeof(inet_diag_msg)))
    return {.told = false, .socket = {}};
  inet_diag_msg found;
  std::memcpy(&found, message + NLMSG_HDRLEN, sizeof found);
  return {.socket = LoopbackSocket{.user = found.idiag_uid, .inode = found.idiag_inode}};
}

SocketAnswer askDiagnosis(std::uint16_t to, std::uint16_t from) {
  const posix::FileDescriptor netlink(
      ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
  const timeval limit{.tv_sec = 0, .tv_usec = 100'000};
  const Question question = questionAbout(to, from);
  alignas(nlmsghdr) std::array<char, 4096> answer;
  if (!netlink || ::setsockopt(netlink.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit) != 0 ||
      ::send(netlink.get(), &question, sizeof question, 0) != sizeof question)
    return {.told = false, .socket = {}};
  const auto length = ::recv(netlink.get(), answer.data(), answer.size(), 0);
  return decode(answer.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
}

}  // namespace

SocketAnswer socketAt(std::uint16_t to, std::uint16_t from) {
  const SocketAnswer answer = askDiagnosis(to, from);
  return answer.told ? answer : SocketTable::ofKernel().socketAt(to, from);
}

}  // namespace tavin::http
