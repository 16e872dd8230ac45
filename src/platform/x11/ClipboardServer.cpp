#include "platform/x11/ClipboardServer.h"

#include <poll.h>
#include <xcb/xfixes.h>

#include <future>

namespace tavin::x11 {
namespace {

// The thread only ever waits for the X server, so this is a guard against a server that hangs.
constexpr double patienceSeconds = 1;
// A cleared clipboard stays ours for a moment: a clipboard manager that fills an abandoned
// clipboard with its own last entry would race with contents that are put there right afterwards.
constexpr double secondsUntilGivenUp = 0.05;

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

}  // namespace

std::unique_ptr<ClipboardServer> ClipboardServer::create(double transferIdleSeconds) {
  auto connection = Connection::open();
  if (!connection)
    return nullptr;
  const auto notices = connection->prepareSelectionNotices();
  if (!notices)
    return nullptr;
  return std::unique_ptr<ClipboardServer>(
      new ClipboardServer(std::move(connection), *notices, transferIdleSeconds));
}

ClipboardServer::ClipboardServer(std::unique_ptr<Connection> connection, std::uint8_t fixesEvent,
                                 double transferIdleSeconds)
    : connection_(std::move(connection)),
      fixesEvent_(fixesEvent),
      window_(connection_->createHiddenWindow(XCB_EVENT_MASK_PROPERTY_CHANGE)),
      clipboard_(connection_->atom("CLIPBOARD")),
      manager_(connection_->atom("CLIPBOARD_MANAGER")),
      saveTargets_(connection_->atom("SAVE_TARGETS")),
      kept_(connection_->atom("_TAVIN_CLIPBOARD")),
      clock_(connection_->atom("_TAVIN_CLOCK")),
      answers_(*connection_, transferIdleSeconds),
      watch_(*connection_) {
  connection_->tellOwners(clipboard_, window_);
  xcb_flush(connection_->get());
  thread_ = std::thread([this] { run(); });
}

ClipboardServer::~ClipboardServer() {
  inbox_.stop();
  thread_.join();
}

std::int64_t ClipboardServer::changeCount() {
  perform(Deadline::in(patienceSeconds), [this] {
    giveUpIfDue(true);
    synchronise();
  });
  return changes_;
}

void ClipboardServer::serve(ClipboardContents contents) {
  perform(Deadline::in(patienceSeconds),
          [this, contents = std::move(contents)]() mutable { claim(std::move(contents)); });
}

void ClipboardServer::clear() {
  perform(Deadline::in(patienceSeconds), [this] {
    if (claim({}))
      giveUpAt_ = Deadline::in(secondsUntilGivenUp);
  });
}

void ClipboardServer::beginWatch(std::function<void()> onChange) {
  perform(Deadline::in(patienceSeconds), [this, onChange = std::move(onChange)]() mutable {
    giveUpIfDue(true);
    synchronise();
    watch_.begin(std::move(onChange), serverTime());
  });
}

void ClipboardServer::endWatch() {
  perform(Deadline::in(patienceSeconds), [this] { watch_.end(); });
}

std::vector<copy::ClipboardChange> ClipboardServer::takeChanges() {
  perform(Deadline::in(patienceSeconds), [this] { synchronise(); });
  return watch_.takeChanges();
}

void ClipboardServer::shortcutArrived(copy::UserInput::Time time) {
  perform(Deadline::in(patienceSeconds), [this, time] {
    synchronise();
    watch_.shortcutArrived(time);
  });
}

bool ClipboardServer::handOver(Deadline answerDue, Deadline deadline) {
  const auto result = std::make_shared<std::promise<bool>>();
  auto answer = result->get_future();
  const auto settle = [result](bool kept) { result->set_value(kept); };
  const bool asked = perform(answerDue, [this, answerDue, deadline, settle] {
    giveUpIfDue(true);
    synchronise();
    xcb_connection_t* c = connection_->get();
    if (!owning_ || !answers_.offersAnything())
      return settle(true);
    const xcb_window_t manager = connection_->ownerOf(manager_);
    if (manager == XCB_WINDOW_NONE)
      return settle(false);
    const auto targets = answers_.targets();
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, kept_, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(c, window_, manager_, saveTargets_, kept_, serverTime());
    handOver_ = HandOver{manager, answerDue, deadline, settle};
  });
  return asked &&
         answer.wait_for(std::chrono::milliseconds(deadline.remainingMs())) ==
             std::future_status::ready &&
         answer.get();
}

bool ClipboardServer::perform(Deadline deadline, std::function<void()> task) {
  const auto done = inbox_.ask<bool>(deadline, [task = std::move(task)] {
    task();
    return true;
  });
  return done.has_value();
}

void ClipboardServer::run() {
  xcb_connection_t* c = connection_->get();
  while (xcb_connection_has_error(c) == 0 && inbox_.run()) {
    continueHandOver();
    // Behind all that has the display answer: events come along, and poll() knows nothing of them.
    handleQueuedEvents();
    answers_.transfers().dropIdle();
    giveUpIfDue(false);
    xcb_flush(c);
    pollfd descriptors[] = {{xcb_get_file_descriptor(c), POLLIN, 0}, {inbox_.file(), POLLIN, 0}};
    poll(descriptors, 2, pollTimeout());
  }
  inbox_.close();
  if (handOver_)
    endHandOver(false);
}

int ClipboardServer::pollTimeout() {
  const auto transfers = answers_.transfers().nextDeadline();
  if (giveUpAt_)
    return giveUpAt_->remainingMs();
  if (const auto next = nextHandOverStep())
    return next->remainingMs();
  return transfers ? transfers->remainingMs() : -1;
}

void ClipboardServer::handleQueuedEvents() {
  while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())})
    handle(*event);
}

void ClipboardServer::handle(const xcb_generic_event_t& event) {
  const std::uint8_t kind = event.response_type & 0x7f;
  if (kind == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
    ++changes_;
    const auto& notice = as<xcb_xfixes_selection_notify_event_t>(event);
    if (!isOwnDoing(notice))
      watch_.ownerChanged(notice.owner);
  } else if (kind == 0) {  // A requestor that went away while it was answered.
    answers_.transfers().windowGone(as<xcb_value_error_t>(event).bad_value);
  } else if (kind == XCB_SELECTION_REQUEST) {
    answers_.answer(as<xcb_selection_request_event_t>(event));
  } else if (kind == XCB_SELECTION_CLEAR) {
    loseOwnership();
  } else if (kind == XCB_PROPERTY_NOTIFY) {
    const auto& change = as<xcb_property_notify_event_t>(event);
    if (change.state == XCB_PROPERTY_DELETE)
      answers_.transfers().propertyDeleted(change.window, change.atom);
  } else if (kind == XCB_DESTROY_NOTIFY) {
    answers_.transfers().windowGone(as<xcb_destroy_notify_event_t>(event).window);
  } else if (kind == XCB_SELECTION_NOTIFY && handOver_) {
    endHandOver(as<xcb_selection_notify_event_t>(event).property != XCB_ATOM_NONE);
  } else {
    watch_.observe(event);
  }
}

// We take the clipboard, or give it up by the time of our own claim.
bool ClipboardServer::isOwnDoing(const xcb_xfixes_selection_notify_event_t& notice) const {
  return notice.owner == window_ ||
         (notice.owner == XCB_WINDOW_NONE &&
          notice.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER &&
          notice.selection_timestamp == claimedAt_);
}

void ClipboardServer::loseOwnership() {
  // The notice may be about an earlier claim of ours, and the clipboard be ours again.
  if (connection_->ownerOf(clipboard_) == window_)
    return;
  owning_ = false;
  giveUpAt_.reset();
  answers_.withdraw();
}

void ClipboardServer::synchronise() {
  connection_->roundTrip();
  handleQueuedEvents();
}

// The time by the display's clock; "now", which is less exact, where it is not told in time.
xcb_timestamp_t ClipboardServer::serverTime() {
  xcb_connection_t* c = connection_->get();
  const Deadline deadline = Deadline::in(patienceSeconds);
  // The property says nothing, but the notice of its change carries the time.
  xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, clock_, XCB_ATOM_INTEGER, 32, 0, nullptr);
  xcb_flush(c);
  while (xcb_connection_has_error(c) == 0) {
    const Reply<xcb_generic_event_t> event{xcb_poll_for_event(c)};
    if (!event) {
      pollfd descriptor{xcb_get_file_descriptor(c), POLLIN, 0};
      if (deadline.passed() || poll(&descriptor, 1, deadline.remainingMs()) == 0)
        break;
      continue;
    }
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
      const auto& change = as<xcb_property_notify_event_t>(*event);
      if (change.window == window_ && change.atom == clock_)
        return change.time;
    }
    handle(*event);
  }
  return XCB_CURRENT_TIME;
}

bool ClipboardServer::claim(ClipboardContents contents) {
  giveUpAt_.reset();
  claimedAt_ = serverTime();
  xcb_set_selection_owner(connection_->get(), window_, clipboard_, claimedAt_);
  owning_ = connection_->ownerOf(clipboard_) == window_;
  if (owning_)
    answers_.offer(std::move(contents), claimedAt_);
  return owning_;
}

// A manager that has not answered in time keeps what it reads by itself.
void ClipboardServer::continueHandOver() {
  const auto next = nextHandOverStep();
  if (!next || !next->passed())
    return;
  if (handOver_->toldAnew || !tellAnew())
    return endHandOver(false);
  handOver_->toldAnew = true;
}

// None until the manager begins to read.
std::optional<Deadline> ClipboardServer::nextHandOverStep() {
  if (!handOver_)
    return std::nullopt;
  if (!handOver_->toldAnew || !owning_)
    return handOver_->answerDue;
  return answers_.readerDoneAt(handOver_->manager);
}

// A manager that heard of two changes at once, a late copy and its end, may have mixed them up. By
// the time of our own claim: the server ignores it where somebody has copied since.
bool ClipboardServer::tellAnew() {
  if (!owning_ || claimedAt_ == XCB_CURRENT_TIME || handOver_->deadline.passed() ||
      connection_->ownerOf(manager_) != handOver_->manager)
    return false;
  answers_.forgetReaders();
  xcb_set_selection_owner(connection_->get(), window_, clipboard_, claimedAt_);
  return connection_->ownerOf(clipboard_) == window_;
}

void ClipboardServer::endHandOver(bool kept) {
  handOver_->onEnd(kept);
  handOver_.reset();
}

void ClipboardServer::giveUpIfDue(bool now) {
  if (!giveUpAt_ || (!now && !giveUpAt_->passed()))
    return;
  giveUpAt_.reset();
  if (!owning_)
    return;
  // By the time of our own claim: the server ignores it where somebody has copied since.
  xcb_set_selection_owner(connection_->get(), XCB_WINDOW_NONE, clipboard_, claimedAt_);
  synchronise();
  owning_ = false;
}

}  // namespace tavin::x11
