// When the menu is laid out; MenuLayout.cpp has what it holds, MenuCommands.cpp its commands.
#include "menu/MenuController.h"

#include "engine/EngineClient.h"

namespace tavin {
namespace {

constexpr double statusTimeout = 0.4;
constexpr double measuringTimeout = 0.05;

}  // namespace

MenuController::MenuController(MenuTarget& app, Services services)
    : app_(app), services_(services) {
  menu_.delegate = this;
  menu_.autoenablesItems = false;
}

MenuController::~MenuController() = default;

void MenuController::menuNeedsUpdate(Menu&) {
  const auto status = services_.engine.status(statusTimeout, TimeLimit::total);
  layOut(status);
  if (status)
    refreshVoices(status->engine);
}

void MenuController::menuNeedsMeasuring(Menu&) {
  const auto status = services_.engine.status(measuringTimeout, TimeLimit::total);
  // A busy engine is no reason to have the menu measured without its lines.
  if (status || menu_.items.empty())
    layOut(status);
}

}  // namespace tavin
