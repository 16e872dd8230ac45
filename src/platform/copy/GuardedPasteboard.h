#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/Deadline.h"
#include "platform/copy/CopyKeyboard.h"
#include "platform/copy/WakeUp.h"
#include "platform/copy/WatchedPasteboard.h"

namespace tavin::copy {

// A clipboard that the copy command leaves as it was.
//
// Where no copy can be made, its contents are not even read, and where the command is not typed in
// the end, what happened to it meanwhile is the user's doing and counts as no change. Once it is
// typed, every change since the contents were read counts.
//
// A program that is busy may carry the command out long after the capture has given up waiting. So
// the contents are kept until the command was answered: the next change after the capture's end is
// the answer, and undone, where it comes from the program that got the command and the user has
// pressed no key or button since, but those of our shortcuts. Whether a press was a shortcut's is
// known once that has arrived; until then nothing is decided. What another program puts there right
// after such an answer is taken for a clipboard manager's. A thread of its own sees to all that,
// asleep otherwise. The pasteboard's functions are for the work queue only.
class GuardedPasteboard final : public Pasteboard {
 public:
  // Both from the moment that the command was typed.
  struct Patience {
    // Then the capture, which waits 0.4 s, is over; what comes later it is not told.
    std::chrono::milliseconds capture{450};
    // Then the contents are kept no longer.
    std::chrono::milliseconds kept{10'000};
  };

  using Clock = WakeUp::Clock;

  // `keyboard` must outlive it.
  GuardedPasteboard(std::unique_ptr<WatchedPasteboard> pasteboard, CopyKeyboard& keyboard);
  GuardedPasteboard(std::unique_ptr<WatchedPasteboard> pasteboard, CopyKeyboard& keyboard,
                    Patience patience);
  ~GuardedPasteboard() override;

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override;
  std::int64_t changeCount() override;
  std::optional<QString> string() override { return pasteboard_->string(); }
  void clearContents() override;
  void writeObjects(const std::vector<PasteboardItem>& items) override;

  // One of our shortcuts was pressed, and arrived then. Any thread, returns at once.
  void shortcutArrived(UserInput::Time time = Clock::now());
  // The user has asked for a selection. Work queue only, returns at once.
  void captureBegins();
  // From now on no capture gets or changes anything; the contents are given back as soon as the
  // command is answered. Returns then, or when the time is over. The keyboard must have been closed
  // before. Any thread.
  void finish(Deadline deadline);

 private:
  using Contents = std::vector<PasteboardItem>;
  enum class Stage {
    idle,     // No command is unanswered.
    awaited,  // One is.
    taken,    // The capture has the answer, and gives the contents back itself.
  };

  void run();
  std::unique_lock<std::mutex> takeTurn();
  Clock::time_point nextLook() const;
  // All below with the mutex.
  void endCapture();
  bool settle(bool mayWait);
  void takeNews();
  bool judge(Clock::time_point now, bool mayWait);
  bool holdsWhatWasSaved();
  void commandTyped();
  bool takeAnswer(std::int64_t changes, bool late);
  void answered(std::ptrdiff_t times);
  std::ptrdiff_t changesByTarget() const;
  void giveBack();
  void awaitFurtherAnswers();
  void forget();
  void tellWhetherBusy();

  const std::unique_ptr<WatchedPasteboard> pasteboard_;
  CopyKeyboard& keyboard_;
  const Patience patience_;

  std::mutex door_;   // Taken before mutex_, so that who waits has the next turn.
  std::mutex mutex_;  // For the pasteboard's calls, save string(), and for what follows.
  // Of the present capture.
  std::optional<Contents> contents_;  // None once the command is typed.
  int typedBefore_ = 0;
  std::optional<std::int64_t> told_;  // The count at its start; none until it is asked for.
  std::int64_t base_ = 0;  // The pasteboard's count at which the capture is told that one.
  // Of the commands that are unanswered.
  Stage stage_ = Stage::idle;
  std::ptrdiff_t unanswered_ = 0;
  Contents saved_;                         // What is to be given back.
  bool gaveBack_ = false;                  // Since the last was typed.
  std::vector<ClipboardChange> unjudged_;  // Since the capture's end.
  Clock::time_point captureOver_, keptUntil_;

  std::mutex arrivalsMutex_;
  std::vector<Clock::time_point> arrivals_;  // Of shortcuts; not yet told to the pasteboard.

  std::atomic<bool> captureBegun_ = false;  // And the former one has not been ended yet.
  std::atomic<bool> closed_ = false;
  std::atomic<bool> busy_ = false;  // A capture is under way, or a command unanswered.
  WakeUp becameFree_;               // No longer busy, which finish() waits for.
  std::atomic<bool> ending_ = false;
  WakeUp wake_;
  std::thread thread_;
};

}  // namespace tavin::copy
