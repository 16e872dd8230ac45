#include "platform/tray/DBusMenu.h"

#include <algorithm>
#include <chrono>

#include "platform/desktop/Catalogue.h"
#include "platform/tray/DBusMenuTypes.h"
#include "platform/tray/Introspection.h"
#include "platform/tray/MenuSource.h"

namespace tavin::tray {

namespace {

using namespace std::chrono_literals;
constexpr std::chrono::milliseconds firstSettling = 1s;
constexpr std::chrono::milliseconds lastSettling = 8s;

// An empty list of names asks for all.
QVariantMap named(const QVariantMap& properties, const QStringList& names) {
  if (names.isEmpty())
    return properties;
  QVariantMap chosen;
  for (const QString& name : names)
    if (properties.contains(name))
      chosen.insert(name, properties.value(name));
  return chosen;
}

// A negative depth asks for everything below.
LayoutItem exported(const MenuNode& node, int depth, const QStringList& names) {
  LayoutItem item{node.id, named(node.properties, names), {}};
  if (depth != 0)
    for (const MenuNode& child : node.children)
      item.children.append(exported(child, depth < 0 ? depth : depth - 1, names));
  return item;
}

void exportProperties(const MenuNode& node, const QStringList& names, QList<ItemProperties>& list) {
  list.append({node.id, named(node.properties, names)});
  for (const MenuNode& child : node.children) exportProperties(child, names, list);
}

}  // namespace

DBusMenu::DBusMenu(const QDBusConnection& bus, MenuSource& source)
    : bus::BusObject(bus, QLatin1String(path), "com.canonical.dbusmenu",
                     QLatin1String(dbusMenuDescription)),
      source_(source) {
  registerDBusMenuTypes();
  settling_.setSingleShot(true);
  connect(&settling_, &QTimer::timeout, this, [this] { settle(); });
  addMethod("GetLayout", "iias", [this](const auto& arguments) { return getLayout(arguments); });
  addMethod("GetGroupProperties", "aias",
            [this](const auto& arguments) { return getGroupProperties(arguments); });
  addMethod("GetProperty", "is", [this](const auto& arguments) { return getProperty(arguments); });
  addMethod("Event", "isvu", [this](const auto& arguments) { return singleEvent(arguments); });
  addMethod("EventGroup", "a(isvu)",
            [this](const auto& arguments) { return eventGroup(arguments); });
  addMethod("AboutToShow", "i", [this](const auto& arguments) { return aboutToShow(arguments); });
  addMethod("AboutToShowGroup", "ai",
            [this](const auto& arguments) { return aboutToShowGroup(arguments); });
}

QVariantMap DBusMenu::properties() const {
  return {{"Version", 3U},
          {"Status", "normal"},
          {"TextDirection", desktop::isRightToLeft() ? "rtl" : "ltr"},
          {"IconThemePath", QStringList()}};
}

DBusMenu::Answer DBusMenu::getLayout(const QVariantList& arguments) const {
  const MenuNode* node = layout_.find(arguments.at(0).toInt());
  if (node == nullptr)
    return std::nullopt;
  const LayoutItem item = exported(*node, arguments.at(1).toInt(), arguments.at(2).toStringList());
  return QVariantList{revision_, QVariant::fromValue(item)};
}

DBusMenu::Answer DBusMenu::getGroupProperties(const QVariantList& arguments) const {
  const auto ids = qdbus_cast<QList<int>>(arguments.at(0));
  const QStringList names = arguments.at(1).toStringList();
  QList<ItemProperties> list;
  if (ids.isEmpty())
    exportProperties(layout_.root(), names, list);
  for (const int id : ids)
    if (const MenuNode* node = layout_.find(id))
      list.append({id, named(node->properties, names)});
  return QVariantList{QVariant::fromValue(list)};
}

DBusMenu::Answer DBusMenu::getProperty(const QVariantList& arguments) const {
  const MenuNode* node = layout_.find(arguments.at(0).toInt());
  const QVariant value = node ? node->properties.value(arguments.at(1).toString()) : QVariant();
  if (!value.isValid())
    return std::nullopt;
  return QVariantList{QVariant::fromValue(QDBusVariant(value))};
}

DBusMenu::Answer DBusMenu::singleEvent(const QVariantList& arguments) {
  if (!handleEvent(arguments.at(0).toInt(), arguments.at(1).toString()))
    return std::nullopt;
  return QVariantList{};
}

DBusMenu::Answer DBusMenu::eventGroup(const QVariantList& arguments) {
  const auto events = qdbus_cast<QList<MenuEvent>>(arguments.at(0));
  QList<int> unknown;
  for (const MenuEvent& event : events)
    if (!handleEvent(event.id, event.name))
      unknown.append(event.id);
  if (!events.isEmpty() && unknown.size() == events.size())
    return std::nullopt;
  return QVariantList{QVariant::fromValue(unknown)};
}

bool DBusMenu::handleEvent(int id, const QString& name) {
  const MenuNode* node = layout_.find(id);
  if (node == nullptr)
    return false;
  if (id == 0 && name == QLatin1String("opened"))
    settling_.stop();
  if (id == 0 && name == QLatin1String("closed"))
    closed();
  const bool offered =
      node->properties.value("visible").toBool() && node->properties.value("enabled").toBool();
  if (name != QLatin1String("clicked") || !offered)
    return true;
  source_.choose(node->item);
  if (toggleOf(node->item) != Toggle::none)
    keepMeasured();  // A line of the root is about to name what was chosen.
  return true;
}

DBusMenu::Answer DBusMenu::aboutToShow(const QVariantList& arguments) {
  const int id = arguments.at(0).toInt();
  if (layout_.find(id) == nullptr)
    return std::nullopt;
  return QVariantList{id == 0 && refresh()};
}

DBusMenu::Answer DBusMenu::aboutToShowGroup(const QVariantList& arguments) {
  const auto ids = qdbus_cast<QList<int>>(arguments.at(0));
  QList<int> changed;
  if (ids.contains(0) && refresh())
    changed.append(0);
  QList<int> unknown;
  std::copy_if(ids.begin(), ids.end(), std::back_inserter(unknown),
               [this](int id) { return layout_.find(id) == nullptr; });
  return QVariantList{QVariant::fromValue(changed), QVariant::fromValue(unknown)};
}

void DBusMenu::prepare() {
  measure();
  keepMeasured();
}

bool DBusMenu::refresh() {
  settling_.stop();
  const NumberedMenu::Changes changes = take(source_.refresh());
  resized_ = changes.rootSize;
  return std::find(changes.children.begin(), changes.children.end(), 0) != changes.children.end();
}

void DBusMenu::measure() { take(source_.measure()); }

NumberedMenu::Changes DBusMenu::take(const Menu* menu) {
  if (menu == nullptr)
    return {};
  NumberedMenu::Changes changes = layout_.update(*menu);
  announce(changes);
  return changes;
}

void DBusMenu::closed() {
  if (resized_)
    keepMeasured();  // More lines may be on their way, as while the engine starts.
  resized_ = false;
}

void DBusMenu::keepMeasured() {
  if (!settling_.isActive())
    settling_.start(firstSettling);
}

void DBusMenu::settle() {
  const auto next = 2 * settling_.intervalAsDuration();
  measure();
  if (next <= lastSettling)
    settling_.start(next);
  else
    settling_.stop();
}

void DBusMenu::announce(const NumberedMenu::Changes& changes) {
  if (!changes.properties.empty()) {
    static const QStringList changeable{"visible", "label", "accessible-desc", "enabled",
                                        "toggle-state"};
    QList<ItemProperties> updated;
    for (const int id : changes.properties)
      updated.append({id, named(layout_.find(id)->properties, changeable)});
    emitSignal("ItemsPropertiesUpdated",
               {QVariant::fromValue(updated), QVariant::fromValue(QList<RemovedProperties>())});
  }
  if (changes.children.empty())
    return;
  ++revision_;
  for (const int id : changes.children) emitSignal("LayoutUpdated", {revision_, id});
}

}  // namespace tavin::tray
