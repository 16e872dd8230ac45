#include "platform/tray/ModalAlerts.h"

#include <QTimer>
#include <deque>
#include <utility>

#include "platform/tray/AlertDialog.h"
#include "platform/tray/BringToFront.h"

namespace tavin {

namespace {

class ModalAlerts final : public QObject, public AlertPresenter {
 public:
  void activateIgnoringOtherApps() override { nextInFront_ = true; }

  void runModal(const Alert& alert, std::function<void(AlertResponse)> completion) override {
    const bool inFront = std::exchange(nextInFront_, false);
    waiting_.push_back({alert, inFront, std::move(completion)});
    if (!busy_)
      openNext();
    else if (inFront && dialog_)  // What was asked for waits for it: the user must find it.
      tray::bringToFront(*dialog_);
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
    dialog_ = std::make_unique<tray::AlertDialog>(request.alert);
    connect(dialog_.get(), &QDialog::finished, this,
            [this, completion = std::move(request.completion)] { answered(completion); });
    dialog_->show();
    if (request.inFront)
      tray::bringToFront(*dialog_);
  }

  // From the event loop: the dialog is still in its own code when it says that it is finished.
  void answered(const std::function<void(AlertResponse)>& completion) {
    QTimer::singleShot(0, this, [this, completion] {
      AlertResponse response = dialog_->takeResponse();
      dialog_.reset();
      if (completion)
        completion(std::move(response));
      openNext();
    });
  }

  std::deque<Request> waiting_;
  std::unique_ptr<tray::AlertDialog> dialog_;
  bool nextInFront_ = false;
  bool busy_ = false;  // From the opening of an alert to the end of its completion.
};

}  // namespace

std::unique_ptr<AlertPresenter> createAlertPresenter() { return std::make_unique<ModalAlerts>(); }

}  // namespace tavin
