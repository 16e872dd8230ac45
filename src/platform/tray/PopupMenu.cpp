#include "platform/tray/PopupMenu.h"

#include <utility>

#include "platform/tray/MenuSource.h"
#include "platform/windowlink/WindowProgram.h"

namespace tavin::tray {

namespace {

using windowlink::MenuLine;

MenuLine lineOf(const Menu& menu, const MenuItem& item, std::vector<MenuItem>& commands) {
  MenuLine line;
  if (item.separator) {
    line.kind = MenuLine::Kind::separator;
    return line;
  }
  line.title = drawnTitle(item.title);
  line.enabled = isEnabled(menu, item);
  if (item.submenu) {
    line.kind = MenuLine::Kind::submenu;
    line.lines = linesOf(*item.submenu, commands);
    return line;
  }
  line.toggle = toggleOf(item);
  line.checked = item.state;
  line.number = static_cast<quint32>(commands.size());
  commands.push_back(item);
  return line;
}

}  // namespace

std::vector<MenuLine> linesOf(const Menu& menu, std::vector<MenuItem>& commands) {
  std::vector<MenuLine> lines;
  for (const MenuItem& item : menu.items) lines.push_back(lineOf(menu, item, commands));
  return lines;
}

PopupMenu::PopupMenu(MenuSource& source, std::shared_ptr<windowlink::WindowProgram> program)
    : source_(source), program_(std::move(program)) {}

PopupMenu::~PopupMenu() { program_->closeMenu(); }

void PopupMenu::open(std::optional<QPoint> position) {
  const Menu* menu = isOpen_ ? nullptr : source_.refresh();
  if (menu == nullptr)
    return;
  isOpen_ = true;
  std::vector<MenuItem> commands;
  auto lines = linesOf(*menu, commands);
  program_->showMenu(position, std::move(lines),
                     [this, commands = std::move(commands)](std::optional<quint32> chosen) {
                       isOpen_ = false;
                       if (chosen && *chosen < commands.size())
                         source_.choose(commands[*chosen]);
                     });
}

}  // namespace tavin::tray
