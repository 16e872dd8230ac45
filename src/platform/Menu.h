#pragma once

#include <QString>
#include <memory>
#include <variant>
#include <vector>

namespace tavin {

// The commands a menu item can carry.
enum class MenuAction {
  none,
  speakOrStop,
  togglePause,
  selectShortcut,
  selectEngine,
  selectVoice,
  selectSpeed,
  setElevenLabsKey,
  setOpenAIKey,
  toggleLogin,
  openLog,
  quit,
};

struct Menu;

// One line of a menu, as plain data. A title may hold one tab: what follows it stands at the right.
struct MenuItem {
  QString title;
  MenuAction action = MenuAction::none;
  std::variant<std::monostate, QString, double> representedObject;
  bool state = false;
  bool enabled = true;
  bool separator = false;
  std::shared_ptr<Menu> submenu;
};

// Fills a menu before it opens and carries out its commands. Main thread only.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;
  virtual void menuNeedsUpdate(Menu& menu) = 0;
  // The same lines for a panel that only measures them: quick, and nothing is fetched for it.
  virtual void menuNeedsMeasuring(Menu& menu) = 0;
  virtual void perform(const MenuItem& item) = 0;
};

struct Menu {
  std::vector<MenuItem> items;
  // With automatic enabling an item is enabled exactly when it has an action.
  bool autoenablesItems = true;
  MenuDelegate* delegate = nullptr;  // Not owned.
};

// What the user sees: the item's own flag, or the rule above. An item that opens a submenu counts
// as having an action.
inline bool isEnabled(const Menu& menu, const MenuItem& item) {
  if (!menu.autoenablesItems)
    return item.enabled;
  return item.action != MenuAction::none || item.submenu != nullptr;
}

}  // namespace tavin
