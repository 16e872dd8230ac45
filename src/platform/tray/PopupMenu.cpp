#include "platform/tray/PopupMenu.h"

#include <QActionGroup>
#include <QCursor>
#include <QGuiApplication>
#include <QWindow>

#include "platform/tray/Contrast.h"
#include "platform/tray/MenuSource.h"
#include "platform/tray/PopupGrab.h"

namespace tavin::tray {

namespace {

// A single ampersand marks an access key.
QString escaped(const QString& title) {
  return drawnTitle(title).replace('&', QLatin1String("&&"));
}

// Also where the menu is a window, which stays open by itself: the command may ask for a window of
// its own, or for the one that had the keyboard before.
void hideWholeMenu(QMenu* menu) {
  for (; menu != nullptr; menu = qobject_cast<QMenu*>(menu->parentWidget())) menu->hide();
}

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
  QObject::connect(action, &QAction::triggered, action, [&widget, &source, item] {
    hideWholeMenu(&widget);
    source.choose(item);
  });
}

// Some themes draw disabled text in a colour that hardly anybody can read.
constexpr double leastContrast = 3;

QColor readable(QColor text, const QPalette& theme) {
  const QColor enabled = theme.color(QPalette::Active, QPalette::WindowText);
  // Styles differ in which is a menu's ground; what even enabled text is not clear on is none.
  const auto isClearOn = [&](QPalette::ColorRole role) {
    const QColor ground = theme.color(QPalette::Active, role);
    return contrast(text, ground) >= leastContrast || contrast(enabled, ground) < leastContrast;
  };
  const auto isClear = [&] { return isClearOn(QPalette::Window) && isClearOn(QPalette::Base); };
  const auto nearer = [](int part, int wanted) { return (9 * part + wanted) / 10; };
  for (int step = 0; step < 20 && !isClear(); ++step)
    text = QColor(nearer(text.red(), enabled.red()), nearer(text.green(), enabled.green()),
                  nearer(text.blue(), enabled.blue()));
  return text;
}

void makeDisabledLinesReadable(QMenu& menu) {
  QPalette palette = menu.palette();
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role,
                     readable(palette.color(QPalette::Disabled, role), palette));
  menu.setPalette(palette);
}

// Other display servers let no program place a menu that hangs from no window of its own, or hold
// the pointer for it: then it is a small window. Its size is fixed so that no compositor tiles it.
void makeWindow(QMenu& menu) {
  menu.setWindowFlags(Qt::Dialog);
  menu.setFixedSize(menu.sizeHint());
  // In place of a click beside a menu.
  QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &menu, [&menu](QWindow* focus) {
    if (!focus)
      menu.close();
  });
}

}  // namespace

void fillMenu(QMenu& widget, const Menu& menu, MenuSource& source) {
  makeDisabledLinesReadable(widget);
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
  const bool asWindow = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
  if (asWindow)
    makeWindow(*widget_);
  widget_->popup(position);
  widget_->raise();
  if (!asWindow)
    holdInput(*widget_);
}

void PopupMenu::openAtPointer() { open(QCursor::pos()); }

}  // namespace tavin::tray
