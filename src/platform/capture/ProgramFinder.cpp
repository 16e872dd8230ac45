#include "platform/capture/ProgramFinder.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <list>
#include <thread>

#include "platform/windows/ProcessInfo.h"

namespace tavin::capture {
namespace {

using namespace atspi;

// How often the answers of many programs are looked at while some are missing.
constexpr auto lookInterval = std::chrono::microseconds(500);

// The first windows of a program that are looked at.
constexpr std::size_t mostWindowsAsked = 100;

// One of many programs that are asked at the same time whether they have an active window.
class Candidate {
 public:
  enum class Answer { pending, active, inactive };

  Candidate(atspi::Bus& bus, const atspi::ObjectRef& program, Deadline deadline)
      : program_(program), windows_(bus.send({program, "Accessible", "GetChildren"}, deadline)) {}

  const atspi::ObjectRef& program() const { return program_; }
  // What is known by now, without waiting.
  Answer answer(atspi::Bus& bus, Deadline deadline) {
    if (!windows_.isFinished())
      return Answer::pending;
    if (!asked_)
      askWindows(bus, deadline);
    bool pending = false;
    for (const auto& state : states_) {
      pending = pending || !state.isFinished();
      if (state.isFinished() && statesIn(state.reply()).has(States::active))
        return Answer::active;
    }
    return pending ? Answer::pending : Answer::inactive;
  }

 private:
  void askWindows(atspi::Bus& bus, Deadline deadline) {
    asked_ = true;
    auto windows = objectsIn(windows_.reply());
    windows.resize(std::min(windows.size(), mostWindowsAsked));
    for (const auto& window : windows)
      states_.push_back(bus.send({window, "Accessible", "GetState"}, deadline));
  }

  atspi::ObjectRef program_;
  QDBusPendingCall windows_;
  bool asked_ = false;
  std::vector<QDBusPendingCall> states_;
};

// Of the programs that are asked all at once, the first to answer with a focused object in an
// active window; one that hangs keeps nobody waiting. Else the first that has the active window and
// shows nothing in it.
std::optional<FoundProgram> firstInFront(atspi::Bus& bus,
                                         const std::vector<atspi::ObjectRef>& programs,
                                         Deadline deadline) {
  std::optional<FoundProgram> withoutFocus;
  std::list<Candidate> waiting;
  for (const auto& program : programs) waiting.emplace_back(bus, program, deadline);
  while (!waiting.empty() && !deadline.passed()) {
    for (auto candidate = waiting.begin(); candidate != waiting.end();) {
      const auto answer = candidate->answer(bus, deadline);
      if (answer == Candidate::Answer::active) {
        FoundProgram found{candidate->program(), findFocus(bus, candidate->program(), deadline)};
        if (found.search.focus && found.search.inActiveWindow)
          return found;
        if (!withoutFocus)
          withoutFocus = std::move(found);
      }
      candidate =
          answer == Candidate::Answer::pending ? std::next(candidate) : waiting.erase(candidate);
    }
    std::this_thread::sleep_for(lookInterval);
  }
  return withoutFocus;
}

// A process may be on the bus more than once.
FoundProgram bestOf(atspi::Bus& bus, const std::vector<atspi::ObjectRef>& programs,
                    Deadline deadline) {
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

std::optional<FoundProgram> findProgram(atspi::Bus& bus, windows::WindowSystem& windows,
                                        const windows::FrontWindow& front, Deadline deadline) {
  const auto programs = bus.programs(deadline);
  const auto processes = bus.processIds(programs, deadline);
  std::vector<atspi::ObjectRef> own;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    if (front.processId != 0 && processes[i] == front.processId)
      own.push_back(programs[i]);
  }
  if (!own.empty())
    return bestOf(bus, own, deadline);
  // Whoever shows windows itself is not the one in front, where that one is known.
  const auto others = windows.windowProcesses();
  const std::string sandbox = windows::sandboxOf(static_cast<pid_t>(front.processId));
  std::vector<atspi::ObjectRef> candidates;
  std::vector<atspi::ObjectRef> neighbours;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    if (front.processId != 0 && others.contains(processes[i]))
      continue;
    if (!sandbox.empty() && windows::sandboxOf(static_cast<pid_t>(processes[i])) == sandbox)
      neighbours.push_back(programs[i]);
    candidates.push_back(programs[i]);
  }
  if (!neighbours.empty())
    return bestOf(bus, neighbours, deadline);
  auto found = firstInFront(bus, candidates, deadline);
  const bool onlyGuessed = front.processId != 0 && found && !found->search.focus;
  return onlyGuessed ? std::nullopt : found;
}

}  // namespace tavin::capture
