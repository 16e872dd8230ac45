#include "platform/tray/Tray.h"

#include <QGuiApplication>
#include <utility>

#include "platform/tray/MenuSource.h"
#include "platform/tray/NotifierTray.h"
#include "platform/tray/PopupMenu.h"
#include "platform/tray/XEmbedIcon.h"

namespace tavin {

namespace {

class Tray final : public StatusItem {
 public:
  explicit Tray(std::function<void()> commandChosen)
      : source_(std::move(commandChosen)),
        popup_(source_),
        notifier_(
            source_, [this](QPoint position) { popup_.open(position); },
            [this](bool watched) { useXEmbed(!watched); }) {}

  void setImage(const QString& symbolName, const QString& accessibilityDescription) override {
    image_ = tray::trayImage(symbolName);
    description_ = accessibilityDescription;
    notifier_.setImage(image_, description_);
    if (xembed_)
      xembed_->setImage(image_, description_);
  }

  void setMenu(Menu* menu) override { source_.setMenu(menu); }
  void popUpMenu() override { popup_.openAtPointer(); }

 private:
  void useXEmbed(bool wanted) {
    xembed_.reset();
    if (!wanted || QGuiApplication::platformName() != QLatin1String("xcb"))
      return;
    xembed_ = std::make_unique<tray::XEmbedIcon>([this] { popup_.openAtPointer(); });
    xembed_->setImage(image_, description_);
  }

  tray::MenuSource source_;
  tray::PopupMenu popup_;
  tray::TrayImage image_;
  QString description_;
  std::unique_ptr<tray::XEmbedIcon> xembed_;  // Only while there is no watcher.
  tray::NotifierTray notifier_;
};

}  // namespace

std::unique_ptr<StatusItem> createStatusItem(std::function<void()> commandChosen) {
  return std::make_unique<Tray>(std::move(commandChosen));
}

}  // namespace tavin
