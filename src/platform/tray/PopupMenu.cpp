#include "platform/tray/PopupMenu.h"

#include <QActionGroup>
#include <QCursor>
#include <QGuiApplication>

#include "platform/tray/MenuSource.h"
#include "platform/tray/PopupGrab.h"

namespace tavin::tray {

namespace {

// A single ampersand marks an access key.
QString escaped(const QString& title) { return QString(title).replace('&', QLatin1String("&&")); }

void addItem(QMenu& widget, QActionGroup& radios, const Menu& menu, const MenuItem& item,
             MenuSource& source) {
  if (item.separator) {
    widget.addSeparator();
    return;
  }
  if (item.submenu) {
    QMenu* submenu = widget.addMenu(escaped(item.title));
    submenu->setEnabled(isEnabled(menu, item));
    fillMenu(*submenu, *item.submenu, source);
    return;
  }
  QAction* action = widget.addAction(escaped(item.title));
  action->setEnabled(isEnabled(menu, item));
  const Toggle toggle = toggleOf(item);
  action->setCheckable(toggle != Toggle::none);
  if (toggle == Toggle::radio)
    radios.addAction(action);
  action->setChecked(item.state);
  QObject::connect(action, &QAction::triggered, action, [&source, item] { source.choose(item); });
}

}  // namespace

void fillMenu(QMenu& widget, const Menu& menu, MenuSource& source) {
  widget.setSeparatorsCollapsible(false);
  auto* radios = new QActionGroup(&widget);
  for (const MenuItem& item : menu.items) addItem(widget, *radios, menu, item, source);
}

PopupMenu::~PopupMenu() { delete widget_; }

void PopupMenu::open(QPoint position) {
  if (widget_ && widget_->isVisible())
    return;
  const Menu* menu = source_.refresh();
  if (menu == nullptr)
    return;
  delete widget_;
  widget_ = new QMenu;
  fillMenu(*widget_, *menu, source_);
  // Other display servers let no program place a menu that hangs from no window of its own.
  if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
    widget_->setWindowFlags(Qt::Dialog);
  widget_->popup(position);
  widget_->raise();
  holdInput(*widget_);
}

void PopupMenu::openAtPointer() { open(QCursor::pos()); }

}  // namespace tavin::tray
