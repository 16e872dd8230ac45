#include "platform/atspi/ProgramFinder.h"

#include <chrono>
#include <thread>

#include "platform/posix/ProcessInfo.h"

namespace tavin::atspi {
namespace {

// How often the answers of many programs are looked at while some are missing.
constexpr auto lookInterval = std::chrono::microseconds(500);

// Of the programs that are asked all at once, the first to answer with a focused object in an
// active window; one that hangs keeps nobody waiting.
std::optional<FoundProgram> firstWithFocus(Bus& bus, const std::vector<ObjectRef>& programs,
                                           Deadline deadline) {
  std::vector<std::pair<ObjectRef, QDBusPendingCall>> waiting;
  for (const auto& program : programs)
    waiting.emplace_back(program, bus.send({program, "Accessible", "GetChildren"}, deadline));
  while (!waiting.empty() && !deadline.passed()) {
    for (auto entry = waiting.begin(); entry != waiting.end();) {
      if (!entry->second.isFinished()) {
        ++entry;
        continue;
      }
      const bool answered = isAnswer(entry->second.reply());
      FoundProgram found{entry->first, {}};
      entry = waiting.erase(entry);
      if (!answered)
        continue;
      found.search = findFocus(bus, found.program, deadline);
      if (found.search.focus && found.search.inActiveWindow)
        return found;
    }
    std::this_thread::sleep_for(lookInterval);
  }
  return std::nullopt;
}

// A process may be on the bus more than once.
FoundProgram bestOf(Bus& bus, const std::vector<ObjectRef>& programs, Deadline deadline) {
  FoundProgram best{programs.front(), {}};
  for (const auto& program : programs) {
    FoundProgram found{program, findFocus(bus, program, deadline)};
    if (found.search.focus)
      return found;
    if (program == programs.front())
      best = found;
  }
  return best;
}

}  // namespace

std::optional<FoundProgram> findProgram(Bus& bus, WindowSystem& windows, const FrontWindow& front,
                                        Deadline deadline) {
  const auto programs = bus.programs(deadline);
  const auto processes = bus.processIds(programs, deadline);
  std::vector<ObjectRef> own;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    if (front.processId != 0 && processes[i] == front.processId)
      own.push_back(programs[i]);
  }
  if (!own.empty())
    return bestOf(bus, own, deadline);
  // Whoever shows windows itself is not the one in front.
  const auto others = windows.windowProcesses();
  const std::string sandbox = posix::sandboxOf(static_cast<pid_t>(front.processId));
  std::vector<ObjectRef> candidates;
  std::vector<ObjectRef> neighbours;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    if (others.contains(processes[i]))
      continue;
    if (!sandbox.empty() && posix::sandboxOf(static_cast<pid_t>(processes[i])) == sandbox)
      neighbours.push_back(programs[i]);
    candidates.push_back(programs[i]);
  }
  if (!neighbours.empty())
    return bestOf(bus, neighbours, deadline);
  return firstWithFocus(bus, candidates, deadline);
}

}  // namespace tavin::atspi
