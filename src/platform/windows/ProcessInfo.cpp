#include "platform/windows/ProcessInfo.h"

#include <cerrno>
#include <filesystem>
#include <sstream>

#include "platform/posix/ForeignFile.h"

namespace tavin::windows {
namespace {

namespace fs = std::filesystem;

// Far more than any program has; a hostile one shall not hold us up.
constexpr int kMostFiles = 20'000;

fs::path folderOf(pid_t pid) { return fs::path("/proc") / std::to_string(pid); }

std::string textOf(pid_t pid, const char* file) {
  return posix::readForeignFile(folderOf(pid) / file).value_or(std::string());
}

bool endsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::string sandboxInstance(pid_t pid) {
  std::istringstream info(posix::readFileOf(pid, ".flatpak-info").value_or(std::string()));
  const std::string key = "instance-id=";
  for (std::string line; std::getline(info, line);) {
    if (line.rfind(key, 0) == 0)
      return "flatpak:" + line.substr(key.size());
  }
  return {};
}

// The systemd scope or service of one application; not those that many programs share.
std::string applicationScope(pid_t pid) {
  std::istringstream groups(textOf(pid, "cgroup"));
  for (std::string line; std::getline(groups, line);) {
    auto name = line.substr(line.rfind('/') + 1);
    const bool unit = endsWith(name, ".scope") || endsWith(name, ".service");
    if (unit && (name.rfind("app-", 0) == 0 || name.rfind("snap.", 0) == 0))
      return name;
  }
  return {};
}

}  // namespace

std::vector<std::string> commandLine(pid_t pid) {
  std::istringstream file(textOf(pid, "cmdline"));
  std::vector<std::string> words;
  for (std::string word; std::getline(file, word, '\0');) words.push_back(word);
  return words;
}

PtyMaster ptyMasterOf(pid_t pid) {
  std::error_code error;
  fs::directory_iterator files(folderOf(pid) / "fd", error);
  if (error)
    return error.value() == EACCES || error.value() == EPERM ? PtyMaster::unknown : PtyMaster::none;
  for (int i = 0; !error && files != fs::directory_iterator() && i < kMostFiles; ++i) {
    std::error_code gone;
    if (endsWith(fs::read_symlink(files->path(), gone).string(), "/ptmx"))
      return PtyMaster::held;
    files.increment(error);
  }
  return PtyMaster::none;
}

std::string sandboxOf(pid_t pid) {
  std::string instance = sandboxInstance(pid);
  return instance.empty() ? applicationScope(pid) : instance;
}

}  // namespace tavin::windows
