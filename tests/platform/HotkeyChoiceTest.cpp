#include <gtest/gtest.h>

#include "platform/HotkeyChoice.h"

namespace tavin::test {
namespace {

SessionTraits wayland(QStringList desktops = {}, QString gnomeShell = {}) {
  return {.wayland = true,
          .desktops = std::move(desktops),
          .kwinServes = false,
          .gnomeShellVersion = std::move(gnomeShell)};
}

TEST(HotkeyChoiceTest, X11HasGrabsWhateverTheDesktop) {
  SessionTraits session = wayland({"KDE"}, "43.9");
  session.wayland = false;
  session.kwinServes = true;
  EXPECT_EQ(chooseHotkeyRoad(session, {}), HotkeyRoad::x11);
}

TEST(HotkeyChoiceTest, PlasmaIsKnownByItsNameOrByKwinsService) {
  EXPECT_EQ(chooseHotkeyRoad(wayland({"KDE"}), {}), HotkeyRoad::kde);
  SessionTraits unnamed = wayland();
  unnamed.kwinServes = true;
  EXPECT_EQ(chooseHotkeyRoad(unnamed, {}), HotkeyRoad::kde);
}

TEST(HotkeyChoiceTest, GnomeIsKnownByItsShellAndThatsVersion) {
  EXPECT_EQ(chooseHotkeyRoad(wayland({"GNOME"}, "43.9"), {}), HotkeyRoad::gnome);
  EXPECT_EQ(chooseHotkeyRoad(wayland({"ubuntu", "GNOME"}, "47.rc"), {}), HotkeyRoad::gnome);
  EXPECT_EQ(chooseHotkeyRoad(wayland({"GNOME"}, "48.7"), {}), HotkeyRoad::portal);
  EXPECT_EQ(chooseHotkeyRoad(wayland({"GNOME"}, "50"), {}), HotkeyRoad::portal);
}

TEST(HotkeyChoiceTest, ANameAloneIsNoGnome) {
  EXPECT_EQ(chooseHotkeyRoad(wayland({"Budgie", "GNOME"}), {}), HotkeyRoad::none);
}

TEST(HotkeyChoiceTest, OtherCompositorsHaveNone) {
  EXPECT_EQ(chooseHotkeyRoad(wayland({"sway"}), {}), HotkeyRoad::none);
}

TEST(HotkeyChoiceTest, IsForcedByARoadsNameAndNoOther) {
  EXPECT_EQ(chooseHotkeyRoad(wayland({"KDE"}), "x11"), HotkeyRoad::x11);
  EXPECT_EQ(chooseHotkeyRoad(wayland({"KDE"}), "portal"), HotkeyRoad::portal);
  EXPECT_EQ(chooseHotkeyRoad(wayland({"KDE"}), "none"), HotkeyRoad::none);
  EXPECT_EQ(chooseHotkeyRoad(wayland({"KDE"}), "telepathy"), HotkeyRoad::kde);
}

}  // namespace
}  // namespace tavin::test
