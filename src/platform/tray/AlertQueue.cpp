#include "platform/tray/AlertQueue.h"

#include <deque>
#include <utility>

#include "platform/windowlink/WindowProgram.h"

namespace tavin {

namespace {

class AlertQueue final : public AlertPresenter {
 public:
  explicit AlertQueue(std::shared_ptr<windowlink::WindowProgram> program)
      : program_(std::move(program)) {}
  ~AlertQueue() override { program_->closeAlert(); }
  AlertQueue(const AlertQueue&) = delete;
  AlertQueue& operator=(const AlertQueue&) = delete;

  void activateIgnoringOtherApps() override { nextInFront_ = true; }

  void runModal(const Alert& alert, std::function<void(AlertResponse)> completion) override {
    const bool inFront = std::exchange(nextInFront_, false);
    waiting_.push_back({alert, inFront, std::move(completion)});
    if (!busy_)
      openNext();
    else if (inFront)  // What was asked for waits for it: the user must find it.
      program_->bringAlertToFront();
  }

 private:
  struct Request {
    Alert alert;
    bool inFront;
    std::function<void(AlertResponse)> completion;
  };

  void openNext() {
    busy_ = !waiting_.empty();
    if (!busy_)
      return;
    Request request = std::move(waiting_.front());
    waiting_.pop_front();
    program_->showAlert(request.alert, request.inFront,
                        [this, completion = std::move(request.completion)](AlertResponse response) {
                          if (completion)
                            completion(std::move(response));
                          openNext();
                        });
  }

  const std::shared_ptr<windowlink::WindowProgram> program_;
  std::deque<Request> waiting_;
  bool nextInFront_ = false;
  bool busy_ = false;  // From the opening of an alert to the end of its completion.
};

}  // namespace

std::unique_ptr<AlertPresenter> createAlertPresenter(
    std::shared_ptr<windowlink::WindowProgram> program) {
  return std::make_unique<AlertQueue>(std::move(program));
}

}  // namespace tavin
