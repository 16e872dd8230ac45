#include "platform/wayland/SwayTree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <vector>

#include "platform/wayland/SwaySocket.h"

namespace tavin::wayland {
namespace {

std::string appIdOf(const QJsonObject& node) {
  const QString id = node["app_id"].toString();
  return (id.isEmpty() ? node["window_properties"]["class"].toString() : id).toStdString();
}

std::int64_t processOf(const QJsonObject& node) { return node["pid"].toInteger(); }

std::vector<QJsonObject> childrenOf(const QJsonObject& node) {
  std::vector<QJsonObject> children;
  for (const auto* list : {"nodes", "floating_nodes"}) {
    for (const auto& child : node[QLatin1String(list)].toArray())
      children.push_back(child.toObject());
  }
  return children;
}

// Each node names its children, those first that had the keyboard last.
std::int64_t lastFocused(QJsonObject node) {
  for (auto order = node["focus"].toArray(); !order.isEmpty(); order = node["focus"].toArray()) {
    const auto children = childrenOf(node);
    const auto found = std::find_if(children.begin(), children.end(), [&](const auto& child) {
      return child["id"].toInteger() == order[0].toInteger();
    });
    if (found == children.end())
      return 0;
    node = *found;
  }
  const bool shownWindow = processOf(node) > 0 && node["visible"].toBool();
  return shownWindow ? node["id"].toInteger() : 0;
}

}  // namespace

std::optional<SwayTree> readSwayTree(Deadline deadline) {
  const auto answer = askSway(SwayMessage::getTree, {}, deadline);
  const auto root = QJsonDocument::fromJson(answer.value_or(QByteArray())).object();
  if (root.isEmpty())
    return std::nullopt;
  SwayTree tree;
  tree.lastFocused = lastFocused(root);
  std::vector<QJsonObject> nodes{root};
  while (!nodes.empty()) {
    const QJsonObject node = nodes.back();
    nodes.pop_back();
    const std::int64_t process = processOf(node);
    if (process > 0)
      tree.processes.insert(process);
    if (process > 0 && node["focused"].toBool()) {
      tree.focusedProcess = process;
      tree.focusedAppId = appIdOf(node);
    }
    const auto children = childrenOf(node);
    nodes.insert(nodes.end(), children.begin(), children.end());
  }
  return tree;
}

void focusSwayWindow(std::int64_t id, Deadline deadline) {
  askSway(SwayMessage::runCommand, "[con_id=" + QByteArray::number(qlonglong{id}) + "] focus",
          deadline);
}

}  // namespace tavin::wayland
