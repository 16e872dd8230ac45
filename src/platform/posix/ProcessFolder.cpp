#include "platform/posix/ProcessFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>

namespace tavin::posix {
namespace {

// Far more than there are; nobody hostile shall hold us up.
constexpr std::size_t mostProcesses = 100'000;
constexpr std::size_t mostThreads = 2000;

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

Folder openFolder(int in, const char* name) {
  FileDescriptor file(::openat(in, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  Folder folder(file ? ::fdopendir(file.get()) : nullptr);
  if (folder)
    file.release();
  return folder;
}

std::string linkTarget(int in, const char* name) {
  std::array<char, 128> target;
  const auto length = ::readlinkat(in, name, target.data(), target.size());
  return {target.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

std::string shortFile(int in, const char* name) {
  const FileDescriptor file(::openat(in, name, O_RDONLY | O_CLOEXEC));
  std::array<char, 1024> bytes;
  const auto length = file ? ::read(file.get(), bytes.data(), bytes.size()) : 0;
  return {bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

std::string socketName(std::uint32_t inode) { return "socket:[" + std::to_string(inode) + ']'; }

std::optional<int> number(const char* text) {
  int value = 0;
  const char* end = text + std::strlen(text);
  const auto result = std::from_chars(text, end, value);
  return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

std::vector<pid_t> numbersIn(const std::string& path, std::size_t most) {
  const Folder folder = openFolder(AT_FDCWD, path.c_str());
  std::vector<pid_t> numbers;
  const dirent* entry = nullptr;
  while (folder && numbers.size() < most && (entry = ::readdir(folder.get())))
    if (const auto pid = number(entry->d_name))
      numbers.push_back(*pid);
  return numbers;
}

bool sameNamespace(int folder, const char* kind) {
  const std::string theirs = linkTarget(folder, kind);
  return !theirs.empty() &&
         theirs == linkTarget(AT_FDCWD, ("/proc/self/" + std::string(kind)).c_str());
}

}  // namespace

ProcessFolder::ProcessFolder(pid_t pid)
    : pid_(pid),
      folder_(::open(("/proc/" + std::to_string(pid)).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

bool ProcessFolder::runsAs(uid_t user) const {
  struct stat status = {};
  return folder_ && ::fstatat(folder_.get(), "", &status, AT_EMPTY_PATH) == 0 &&
         status.st_uid == user;
}

bool ProcessFolder::isOurChild() const {
  // PID (NAME) STATE PARENT ...; the name may hold anything.
  const std::string stat = shortFile(folder_.get(), "stat");
  const auto nameEnd = stat.rfind(") ");
  if (nameEnd == std::string::npos || nameEnd + 4 >= stat.size())
    return false;
  pid_t parent = 0;
  std::from_chars(stat.data() + nameEnd + 4, stat.data() + stat.size(), parent);
  return parent == ::getpid();
}

// The namespaces first: the root of a stranger's may be a file system that never answers.
bool ProcessFolder::seesOurFiles() const {
  struct stat theirs = {};
  struct stat ours = {};
  return sameNamespace(folder_.get(), "ns/user") && sameNamespace(folder_.get(), "ns/mnt") &&
         ::fstatat(folder_.get(), "root", &theirs, 0) == 0 && ::stat("/", &ours) == 0 &&
         theirs.st_dev == ours.st_dev && theirs.st_ino == ours.st_ino;
}

std::string ProcessFolder::name() const {
  std::string name = shortFile(folder_.get(), "comm");
  name.resize(std::min(name.size(), name.find('\n')));
  // It is the process's own choice, and shall not steer the terminal that shows the log.
  std::ranges::replace_if(
      name, [](unsigned char sign) { return sign < ' ' || sign == 127; }, '?');
  return name;
}

std::optional<int> ProcessFolder::descriptorOf(std::uint32_t socketInode, Deadline deadline) const {
  const Folder files = openFolder(folder_.get(), "fd");
  const std::string wanted = socketName(socketInode);
  for (const dirent* entry = nullptr;
       files && !deadline.passed() && (entry = ::readdir(files.get()));) {
    if (linkTarget(::dirfd(files.get()), entry->d_name) == wanted)
      return number(entry->d_name);
  }
  return std::nullopt;
}

bool ProcessFolder::holds(int descriptor, std::uint32_t socketInode) const {
  return linkTarget(folder_.get(), ("fd/" + std::to_string(descriptor)).c_str()) ==
         socketName(socketInode);
}

bool showsOurWindows(std::int64_t pid) {
  if (pid <= 0 || pid == ::getpid())
    return pid > 0;
  const ProcessFolder process(static_cast<pid_t>(pid));
  return process.isOurChild() && process.name() == windowProgramName;
}

std::vector<pid_t> allProcesses() { return numbersIn("/proc", mostProcesses); }

std::vector<pid_t> childrenOf(pid_t pid) {
  const std::string threads = "/proc/" + std::to_string(pid) + "/task";
  std::vector<pid_t> children;
  for (const pid_t thread : numbersIn(threads, mostThreads)) {
    std::ifstream list(threads + '/' + std::to_string(thread) + "/children");
    children.insert(children.end(), std::istream_iterator<pid_t>(list), {});
  }
  return children;
}

}  // namespace tavin::posix
