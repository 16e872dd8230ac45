#include "platform/x11/X11WindowSystem.h"

#include <thread>
#include <utility>

#include "platform/windows/ProgramKind.h"
#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {
namespace {

constexpr double secondsForMenu = 0.5;
constexpr auto menuInterval = std::chrono::milliseconds(5);

}  // namespace

X11WindowSystem::X11WindowSystem(std::unique_ptr<SelectionReader> reader,
                                 std::unique_ptr<PrimaryWatch> watch)
    : reader_(std::move(reader)), watch_(std::move(watch)), activeWindow_(reader_->connection()) {}

windows::FrontWindow X11WindowSystem::frontWindow() {
  if (menu_.take())
    waitForMenu();
  const xcb_window_t window = activeWindow_.find();
  if (window == XCB_WINDOW_NONE)
    return {};
  windows::FrontWindow front;
  front.id = window;
  front.processId = clientProcess(reader_->connection(), window);
  const auto processes = windowProcesses();
  windows::setProgramKind(front, windowClass(reader_->connection(), window), processes);
  addEmbeddedProgram(front, processes);
  return front;
}

void X11WindowSystem::addEmbeddedProgram(windows::FrontWindow& front,
                                         const std::set<std::int64_t>& processes) {
  const Connection& connection = reader_->connection();
  const xcb_window_t target = activeWindow_.keyTarget();
  const bool embedded = target != XCB_WINDOW_NONE &&
                        !sameClient(connection, target, static_cast<xcb_window_t>(front.id));
  embedded_ = embedded ? target : xcb_window_t{XCB_WINDOW_NONE};
  if (!embedded)
    return;
  const auto host = std::exchange(front.processId, clientProcess(connection, target));
  windows::setProgramKind(front, windowClass(connection, activeWindow_.setUpBy(target)), processes);
  front.processId = host;
}

void X11WindowSystem::waitForMenu() {
  const Deadline deadline = Deadline::in(secondsForMenu);
  while (!deadline.passed()) {
    const xcb_window_t window = activeWindow_.find();
    if (window != XCB_WINDOW_NONE && !activeWindow_.isPassing(window) &&
        !activeWindow_.keyboardIsGrabbed())
      return;
    std::this_thread::sleep_for(menuInterval);
  }
}

std::set<std::int64_t> X11WindowSystem::windowProcesses() {
  const auto processes = clientProcesses(reader_->connection());
  return {processes.begin(), processes.end()};
}

bool X11WindowSystem::primaryIsFrom(const windows::FrontWindow& window) {
  const Connection& connection = reader_->connection();
  const xcb_window_t owner = reader_->owner(XCB_ATOM_PRIMARY);
  if (owner == XCB_WINDOW_NONE)
    return false;
  return sameClient(connection, owner, static_cast<xcb_window_t>(window.id)) ||
         (embedded_ != XCB_WINDOW_NONE && sameClient(connection, owner, embedded_)) ||
         (window.processId != 0 && clientProcess(connection, owner) == window.processId);
}

std::optional<QString> X11WindowSystem::primaryText(const windows::FrontWindow& window,
                                                    PrimaryProof proof, Deadline deadline) {
  if (window.id == 0 || !primaryIsFrom(window))
    return std::nullopt;
  if (proof == PrimaryProof::takenInFront && (!watch_ || watch_->madeInWindow() != window.id))
    return std::nullopt;
  const auto text =
      reader_->convert(XCB_ATOM_PRIMARY, reader_->connection().atom("UTF8_STRING"), deadline);
  if (text.outcome == Conversion::Outcome::converted && text.format == 8)
    return QString::fromUtf8(text.bytes);
  if (text.outcome != Conversion::Outcome::refused)
    return std::nullopt;
  const auto plain = reader_->convert(XCB_ATOM_PRIMARY, XCB_ATOM_STRING, deadline);
  if (plain.outcome == Conversion::Outcome::converted && plain.format == 8)
    return QString::fromLatin1(plain.bytes);
  return std::nullopt;
}

}  // namespace tavin::x11
