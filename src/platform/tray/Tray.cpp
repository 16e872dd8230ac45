#include "platform/tray/Tray.h"

#include <utility>

#include "platform/tray/MenuSource.h"
#include "platform/tray/NotifierTray.h"
#include "platform/tray/PopupMenu.h"
#include "platform/windowlink/WindowProgram.h"
#include "platform/x11/DisplayWatch.h"

namespace tavin {

namespace {

class Tray final : public StatusItem {
 public:
  Tray(std::function<void()> commandChosen, std::shared_ptr<windowlink::WindowProgram> program,
       std::shared_ptr<x11::DisplayWatch> display)
      : program_(std::move(program)),
        display_(std::move(display)),
        source_(std::move(commandChosen)),
        popup_(source_, program_),
        notifier_(
            source_, [this](QPoint position) { popup_.open(position); },
            [this](bool watched) {
              watched_ = watched;
              updateOldStyleIcon();
            }) {
    if (display_)
      display_->onTrayChange([this] { updateOldStyleIcon(); });
  }

  ~Tray() override {
    if (display_)
      display_->onTrayChange({});
    program_->hideIcon();
  }
  Tray(const Tray&) = delete;
  Tray& operator=(const Tray&) = delete;

  void setImage(const QString& symbolName, const QString& accessibilityDescription) override {
    symbol_ = symbolName;
    image_ = tray::trayImage(symbolName);
    description_ = accessibilityDescription;
    notifier_.setImage(image_, description_);
    updateOldStyleIcon();
  }

  void setMenu(Menu* menu) override { source_.setMenu(menu); }
  void popUpMenu() override { popup_.open(std::nullopt); }

 private:
  // Only while there is no watcher: Qt would register with that one too, by itself.
  void updateOldStyleIcon() {
    if (!watched_.value_or(true) && display_ && display_->hasTray())
      program_->showIcon(symbol_, description_ + '\n' + image_.state,
                         [this] { popup_.open(std::nullopt); });
    else
      program_->hideIcon();
  }

  const std::shared_ptr<windowlink::WindowProgram> program_;
  const std::shared_ptr<x11::DisplayWatch> display_;
  tray::MenuSource source_;
  tray::PopupMenu popup_;
  QString symbol_;
  tray::TrayImage image_;
  QString description_;
  std::optional<bool> watched_;  // Whether there is a watcher, once that is known.
  tray::NotifierTray notifier_;
};

}  // namespace

std::unique_ptr<StatusItem> createStatusItem(std::function<void()> commandChosen,
                                             std::shared_ptr<windowlink::WindowProgram> program,
                                             std::shared_ptr<x11::DisplayWatch> display) {
  return std::make_unique<Tray>(std::move(commandChosen), std::move(program), std::move(display));
}

}  // namespace tavin
