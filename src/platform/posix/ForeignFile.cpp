#include "platform/posix/ForeignFile.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {
namespace {

constexpr std::size_t longest = 64 * 1024;
constexpr int readOnly = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

std::optional<std::string> contents(const FileDescriptor& file) {
  struct stat status = {};
  if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
    return std::nullopt;
  std::string bytes(longest, '\0');
  std::size_t length = 0;
  while (length < bytes.size()) {
    const auto count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      return std::nullopt;
    if (count == 0)
      break;
    length += static_cast<std::size_t>(count);
  }
  bytes.resize(length);
  return bytes;
}

}  // namespace

std::optional<std::string> readForeignFile(const std::string& path) {
  return contents(FileDescriptor(::open(path.c_str(), readOnly)));
}

std::optional<std::string> readFileOf(pid_t pid, const std::string& path) {
  const std::string rootName = "/proc/" + std::to_string(pid) + "/root";
  const FileDescriptor root(::open(rootName.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  open_how how{};
  how.flags = readOnly;
  how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
  return contents(FileDescriptor(
      static_cast<int>(::syscall(SYS_openat2, root.get(), path.c_str(), &how, sizeof how))));
}

}  // namespace tavin::posix
