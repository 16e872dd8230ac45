#include "platform/tray/MenuSource.h"

#include <QTimer>
#include <utility>

#include "platform/desktop/Catalogue.h"

namespace tavin::tray {

MenuSource::MenuSource(std::function<void()> commandChosen)
    : commandChosen_(std::move(commandChosen)) {}

const Menu* MenuSource::refresh() {
  if (menu_ != nullptr && menu_->delegate != nullptr)
    menu_->delegate->menuNeedsUpdate(*menu_);
  return menu_;
}

const Menu* MenuSource::measure() {
  if (menu_ != nullptr && menu_->delegate != nullptr)
    menu_->delegate->menuNeedsMeasuring(*menu_);
  return menu_;
}

void MenuSource::choose(const MenuItem& item) {
  if (item.action == MenuAction::none)
    return;
  QTimer::singleShot(0, this, [this, item] {
    if (menu_ == nullptr || menu_->delegate == nullptr)
      return;
    if (commandChosen_)
      commandChosen_();
    menu_->delegate->perform(item);
  });
}

QString drawnTitle(const QString& title) {
  static const QString signs = QStringLiteral("⌥⌃⇧");
  const qsizetype begin = title.lastIndexOf(u'\t') + 1;
  if (!desktop::isRightToLeft() || begin == title.size() || !signs.contains(title[begin]))
    return title;
  constexpr QChar leftToRight(0x2066);
  constexpr QChar end(0x2069);
  return title.left(begin) + leftToRight + title.mid(begin) + end;
}

Toggle toggleOf(const MenuItem& item) {
  switch (item.action) {
    case MenuAction::selectShortcut:
    case MenuAction::selectEngine:
    case MenuAction::selectVoice:
    case MenuAction::selectSpeed:
      return Toggle::radio;
    case MenuAction::toggleLogin:
      return Toggle::checkmark;
    default:
      return item.state ? Toggle::checkmark : Toggle::none;
  }
}

}  // namespace tavin::tray
