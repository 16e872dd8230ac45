#pragma once

#include "engine/EngineClient.h"
#include "fake/LaunchedApp.h"
#include "menu/MenuController.h"

namespace tavin::test {

// A launched program whose menu the test opens.
class MenuFixture : public LaunchedApp {
 protected:
  MenuFixture() {
    launch();
    fakes.engine.answerWith(
        "voices", 200,
        QByteArray(R"([{"id":"en-gb","name":"British"},{"id":"de","name":"German"}])"));
  }

  const std::vector<MenuItem>& open() {
    Menu& menu = app->menuController()->menu();
    menu.delegate->menuNeedsUpdate(menu);
    return menu.items;
  }
  // Opens the menu and lets what that starts run dry.
  void openAndSettle() {
    open();
    fakes.settle();
  }
  // One line for each item: ">" opens a submenu, "-" is disabled, "*" is marked.
  static std::vector<std::string> describe(const Menu& menu) {
    std::vector<std::string> lines;
    for (const MenuItem& item : menu.items) {
      QString line = item.separator ? QStringLiteral("---") : item.title;
      if (item.submenu)
        line.prepend(QLatin1String("> "));
      if (item.state)
        line.prepend(QLatin1String("* "));
      if (!item.separator && !isEnabled(menu, item))
        line.prepend(QLatin1String("- "));
      lines.push_back(line.toStdString());
    }
    return lines;
  }
  std::vector<std::string> opened() {
    open();
    return describe(app->menuController()->menu());
  }
  const MenuItem& item(const QString& titleStart) {
    for (const MenuItem& candidate : open())
      if (candidate.title.startsWith(titleStart))
        return candidate;
    throw std::runtime_error("no item " + titleStart.toStdString());
  }
  std::vector<std::string> submenu(const QString& titleStart) {
    return describe(*item(titleStart).submenu);
  }
  // Picks an item of the menu, or of one of its submenus.
  void choose(const QString& titleStart) { pick(item(titleStart)); }
  void choose(const QString& titleStart, const QString& choice) {
    const auto menu = item(titleStart).submenu;
    for (const MenuItem& candidate : menu->items)
      if (candidate.title == choice)
        return pick(candidate);
    throw std::runtime_error("no choice " + choice.toStdString());
  }
  void pick(const MenuItem& chosen) {
    fakes.settle();
    fakes.journal.clear();
    app->menuController()->perform(chosen);
  }
};

}  // namespace tavin::test
