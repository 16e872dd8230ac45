#include "platform/widgets/MenuWidget.h"

#include <QActionGroup>
#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QStyle>
#include <QWindow>

#include "platform/widgets/Contrast.h"
#include "platform/widgets/DisplayServer.h"
#include "platform/widgets/PopupGrab.h"

namespace tavin::widgets {

namespace {

using windowlink::MenuLine;
using windowlink::Toggle;

// A single ampersand marks an access key.
QString escaped(QString title) { return title.replace('&', QLatin1String("&&")); }

// Also where the menu is a window, which stays open by itself: the command may ask for a window of
// its own, or for the one that had the keyboard before.
void hideWholeMenu(QMenu* menu) {
  for (; menu != nullptr; menu = qobject_cast<QMenu*>(menu->parentWidget())) menu->hide();
}

void addCommand(QMenu& widget, QActionGroup& radios, const MenuLine& line,
                const std::function<void(quint32)>& chosen) {
  QAction* action = widget.addAction(escaped(line.title));
  action->setEnabled(line.enabled);
  action->setCheckable(line.toggle != Toggle::none);
  if (line.toggle == Toggle::radio)
    radios.addAction(action);
  action->setChecked(line.checked);
  QObject::connect(action, &QAction::triggered, action, [&widget, chosen, number = line.number] {
    hideWholeMenu(&widget);
    chosen(number);
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

// Fusion draws boxes and the edge of a menu in the window's colour made darker, which nobody can
// see on a dark ground; the menu's ground is Base, so Window is free for outlines.
void makeOutlinesClear(QMenu& menu) {
  QPalette palette = menu.palette();
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  if (QApplication::style()->name() != QLatin1String("fusion") || text.lightness() < 128)
    return;
  palette.setColor(QPalette::Window, text);
  // Disabled text has a shadow of it.
  palette.setColor(QPalette::Light, palette.color(QPalette::Base));
  menu.setPalette(palette);
}

// Other display servers let no program place a menu that hangs from no window of its own, or hold
// the pointer for it: then it is a small window, which looks like a menu. Its size is fixed so that
// no compositor tiles it.
void makeWindow(QMenu& menu) {
  menu.setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
  menu.setFixedSize(menu.sizeHint());
  // In place of a click beside a menu.
  QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &menu, [&menu](QWindow* focus) {
    if (!focus)
      menu.close();
  });
}

}  // namespace

void fillMenu(QMenu& widget, const std::vector<MenuLine>& lines,
              const std::function<void(quint32)>& chosen) {
  makeDisabledLinesReadable(widget);
  makeOutlinesClear(widget);
  widget.setSeparatorsCollapsible(false);
  auto* radios = new QActionGroup(&widget);
  for (const MenuLine& line : lines) {
    if (line.kind == MenuLine::Kind::separator) {
      widget.addSeparator();
    } else if (line.kind == MenuLine::Kind::submenu) {
      QMenu* submenu = widget.addMenu(escaped(line.title));
      submenu->setAccessibleName(line.title);
      submenu->setEnabled(line.enabled);
      fillMenu(*submenu, line.lines, chosen);
    } else {
      addCommand(widget, *radios, line, chosen);
    }
  }
}

void popUp(QMenu& widget, std::optional<QPoint> position) {
  const bool asWindow = isOnWayland();
  if (asWindow)
    makeWindow(widget);
  widget.popup(position.value_or(QCursor::pos()));
  widget.raise();
  if (!asWindow)
    holdInput(widget);
}

}  // namespace tavin::widgets
