#include "menu/MenuItems.h"

#include <QCoreApplication>
#include <QTextBoundaryFinder>
#include <array>
#include <charconv>
#include <utility>

namespace tavin {

MenuItem commandItem(const QString& title, MenuAction action, const QString& keyLabel) {
  MenuItem item;
  item.title = keyLabel.isEmpty() ? title : title + QLatin1Char('\t') + keyLabel;
  item.action = action;
  return item;
}

MenuItem disabledLine(const QString& title) {
  MenuItem item;
  item.title = title;
  item.enabled = false;
  return item;
}

MenuItem separatorItem() {
  MenuItem item;
  item.separator = true;
  return item;
}

MenuItem submenuItem(const QString& title, std::shared_ptr<Menu> submenu) {
  MenuItem item;
  item.title = title;
  item.submenu = std::move(submenu);
  return item;
}

QString speedText(double speed) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), speed,
                                 std::chars_format::general, 6)
                       .ptr;
  const QString number = QString::fromLatin1(buffer.data(), end - buffer.data());
  const QString point = QCoreApplication::translate("Menu", ".", "decimal point of a speed");
  return QString(number).replace(u'.', point) + QLatin1Char('x');
}

QString firstCharacters(const QString& text, int count) {
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  for (int i = 0; i < count && finder.toNextBoundary() >= 0; ++i) {
  }
  return finder.position() < 0 ? text : text.left(finder.position());
}

}  // namespace tavin
