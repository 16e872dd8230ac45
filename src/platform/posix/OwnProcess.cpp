#include "platform/posix/OwnProcess.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace tavin::posix {

void openStandardFiles() {
  // The lowest free number is given first.
  for (int file = STDIN_FILENO; file <= STDERR_FILENO; ++file)
    if (::fcntl(file, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != file)
      return;
}

// With a limit of 1 the kernel writes no file and starts no program that collects crashes either;
// to the latter it gives the whole memory at any other limit, 0 included.
void keepMemoryPrivate() {
  rlimit limit{};
  if (std::getenv("TAVIN_CORE_DUMPS") || ::getrlimit(RLIMIT_CORE, &limit) != 0)
    return;
  limit.rlim_cur = limit.rlim_max = std::min<rlim_t>(limit.rlim_max, 1);
  ::setrlimit(RLIMIT_CORE, &limit);
}

}  // namespace tavin::posix
