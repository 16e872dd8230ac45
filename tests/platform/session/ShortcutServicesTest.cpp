#include <gtest/gtest.h>

#include "platform/session/ShortcutServices.h"

namespace tavin::test {
namespace {

using session::Survey;

Survey wayland(QStringList desktops = {}, QString gnomeShell = {}) {
  Survey survey;
  survey.xwayland = true;
  survey.desktops = std::move(desktops);
  survey.gnomeShellVersion = std::move(gnomeShell);
  return survey;
}

QString serviceFor(const Survey& survey, const char* forced = "") {
  qputenv("TAVIN_SHORTCUTS", forced);
  const QString name = session::shortcutServiceFor(survey);
  qunsetenv("TAVIN_SHORTCUTS");
  return name;
}

TEST(ShortcutServicesTest, X11HasGrabsWhateverTheDesktop) {
  Survey session = wayland({"KDE"}, "43.9");
  session.xwayland = false;
  session.kwinServesShortcuts = true;
  EXPECT_EQ(serviceFor(session), "x11");
}

TEST(ShortcutServicesTest, PlasmaIsKnownByItsNameOrByKwinsService) {
  EXPECT_EQ(serviceFor(wayland({"KDE"})), "kde");
  Survey unnamed = wayland();
  unnamed.kwinServesShortcuts = true;
  EXPECT_EQ(serviceFor(unnamed), "kde");
}

TEST(ShortcutServicesTest, GnomeIsKnownByItsShellAndThatsVersion) {
  EXPECT_EQ(serviceFor(wayland({"GNOME"}, "43.9")), "gnome");
  EXPECT_EQ(serviceFor(wayland({"ubuntu", "GNOME"}, "47.rc")), "gnome");
  EXPECT_EQ(serviceFor(wayland({"GNOME"}, "48.7")), "portal");
  EXPECT_EQ(serviceFor(wayland({"GNOME"}, "50")), "portal");
}

TEST(ShortcutServicesTest, ANameAloneIsNoGnome) {
  EXPECT_EQ(serviceFor(wayland({"Budgie", "GNOME"})), "none");
}

TEST(ShortcutServicesTest, OtherCompositorsHaveNone) {
  EXPECT_EQ(serviceFor(wayland({"sway"})), "none");
}

TEST(ShortcutServicesTest, IsForcedByAServicesNameAndNoOther) {
  EXPECT_EQ(serviceFor(wayland({"KDE"}), "x11"), "x11");
  EXPECT_EQ(serviceFor(wayland({"KDE"}), "portal"), "portal");
  EXPECT_EQ(serviceFor(wayland({"KDE"}), "none"), "none");
  EXPECT_EQ(serviceFor(wayland({"KDE"}), "telepathy"), "kde");
}

}  // namespace
}  // namespace tavin::test
