#include "platform/windows/ProgramKind.h"

#include <algorithm>

#include "platform/posix/ProcessFolder.h"
#include "platform/windows/ProcessInfo.h"

namespace tavin::windows {
namespace {

using Names = std::vector<std::string>;

// The process tells most terminals, but not one that runs on another machine or whose open files
// are hidden from us, as those of a program that writes the login records are.
const std::set<std::string> terminalNames{
    "alacritty",
    "aterm",
    "blackbox",
    "com.mitchellh.ghostty",
    "contour",
    "cool-retro-term",
    "deepin-terminal",
    "eterm",
    "foot",
    "gnome-terminal",
    "gnome-terminal-server",
    "guake",
    "hyper",
    "io.elementary.terminal",
    "kgx",
    "kitty",
    "konsole",
    "kterm",
    "lilyterm",
    "lxterminal",
    "mate-terminal",
    "mlterm",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "org.kde.konsole",
    "org.wezfurlong.wezterm",
    "pantheon-terminal",
    "qterminal",
    "rio",
    "roxterm",
    "rxvt",
    "sakura",
    "st",
    "st-256color",
    "tabby",
    "termit",
    "terminator",
    "terminology",
    "terminus",
    "tilda",
    "tilix",
    "urxvt",
    "uxterm",
    "warp",
    "wezterm",
    "x-terminal-emulator",
    "xfce4-terminal",
    "xterm",
    "yakuake",
    "zutty",
};
const std::set<std::string> browserNames{
    "brave-browser", "chromium",      "chromium-browser", "epiphany",       "falkon",    "firefox",
    "firefox-esr",   "google-chrome", "librewolf",        "microsoft-edge", "navigator", "opera",
    "qutebrowser",   "seamonkey",     "thunderbird",      "vivaldi-stable",
};
const std::set<std::string> namesWithoutCopyKey{"katarakt", "llpp", "mupdf",  "org.pwmt.zathura",
                                                "sioyek",   "xpdf", "zathura"};

bool anyOf(const Names& names, const std::set<std::string>& known) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& name) { return known.contains(name); });
}

// A browser engine shows its pages in processes of its own and tells them so.
bool rendersForBrowser(pid_t pid) {
  const auto words = commandLine(pid);
  return std::any_of(words.begin(), words.end(), [](const std::string& word) {
    return word == "-contentproc" || word == "--type=zygote" || word == "--type=renderer" ||
           word.find("WebKitWebProcess") != std::string::npos;
  });
}

bool holdsTerminal(pid_t pid, const std::vector<pid_t>& children,
                   const std::set<std::int64_t>& windowProcesses) {
  if (ptyMasterOf(pid) != PtyMaster::none)
    return true;
  return std::any_of(children.begin(), children.end(), [&](pid_t child) {
    return !windowProcesses.contains(child) && ptyMasterOf(child) == PtyMaster::held;
  });
}

}  // namespace

void setProgramKind(FrontWindow& window, const Names& classNames,
                    const std::set<std::int64_t>& windowProcesses) {
  window.terminal = window.terminal || anyOf(classNames, terminalNames);
  window.browser = window.browser || anyOf(classNames, browserNames);
  window.withoutCopyKey = window.withoutCopyKey || anyOf(classNames, namesWithoutCopyKey);
  const auto pid = static_cast<pid_t>(window.processId);
  if (pid == 0)
    return;
  const auto children = posix::childrenOf(pid);
  window.terminal = window.terminal || holdsTerminal(pid, children, windowProcesses);
  window.browser =
      window.browser || std::any_of(children.begin(), children.end(), rendersForBrowser);
}

}  // namespace tavin::windows
