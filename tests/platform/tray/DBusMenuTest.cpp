#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <limits>

#include "FakePanel.h"
#include "InProcessLauncher.h"
#include "SampleMenu.h"
#include "TestApplication.h"
#include "platform/tray/Tray.h"

namespace tavin::tray {
namespace {

using namespace tavin::test;

// An icon that a panel has found, with a menu to open.
class DBusMenuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    sample.items = {command("Speak Selection\t⌥ Esc", MenuAction::speakOrStop), disabled("note"),
                    submenu("Voice: a_b", {choice("a_b", "id-a", true), choice("c", "id-c")}),
                    separator(), command("Quit Tavin", MenuAction::quit)};
    item->setImage("waveform", "Tavin");
    item->setMenu(&sample.menu);
    ASSERT_TRUE(waitFor([&] { return panel.registered.size() == 1; }));
    service = panel.registered[0];
  }

  FakePanel panel;
  QStringList order;  // What became of a choice.
  SampleMenu sample;
  std::unique_ptr<StatusItem> item =
      createStatusItem([this] { order.append("chosen"); }, inProcessProgram(), nullptr);
  QString service;
};

QStringList labels(const QList<LayoutItem>& items) {
  QStringList result;
  for (const LayoutItem& item : items) result.append(item.properties.value("label").toString());
  return result;
}

TEST_F(DBusMenuTest, IsLaidOutBeforeAPanelMeasuresItAsIfNobodyAsked) {
  EXPECT_EQ(sample.measurings, 1);
  EXPECT_EQ(sample.updates, 0);
  QStringList shown;
  for (const LayoutItem& line : panel.layout(service).children)
    if (line.properties.value("visible").toBool())
      shown.append(line.properties.value("label").toString());
  EXPECT_EQ(shown,
            QStringList({"Speak Selection\t⌥ Esc", "note", "Voice: a__b", "", "Quit Tavin"}));
}

TEST_F(DBusMenuTest, IsFreshAtEachOpeningAndKeepsItsRoot) {
  const auto before = panel.open(service);
  const int updates = sample.updates;
  sample.items = {command("Stop"), submenu("Voice: c", {choice("c", "id-c", true)}), separator()};
  const auto after = panel.open(service);
  EXPECT_EQ(sample.updates, updates + 1);
  EXPECT_EQ(labels(after), QStringList({"Stop", "Voice: c", ""}));
  EXPECT_EQ(after[0].id, before[0].id) << "the line is relabelled, not replaced";
  ASSERT_EQ(after[1].children.size(), 1);
}

void expectNoMeasuring(const SampleMenu& sample) {
  const int measurings = sample.measurings;
  QElapsedTimer shown;
  shown.start();
  while (shown.elapsed() < 4000) runEvents();  // The next one was due after two seconds.
  EXPECT_EQ(sample.measurings, measurings) << "nothing changes under the hand";
}

TEST_F(DBusMenuTest, IsMeasuredAgainSoonUntilAPanelShowsIt) {
  ASSERT_TRUE(waitFor([&] { return sample.measurings > 1; }));
  panel.open(service);
  expectNoMeasuring(sample);
  EXPECT_EQ(sample.updates, 1);
}

TEST_F(DBusMenuTest, IsMeasuredAgainSoonUntilAPanelTellsThatItIsOpen) {
  ASSERT_TRUE(waitFor([&] { return sample.measurings > 1; }));
  panel.callMenu(service, "Event", {0, "opened", QVariant::fromValue(QDBusVariant(0)), 0U});
  expectNoMeasuring(sample);
}

TEST_F(DBusMenuTest, IsMeasuredAgainWhenAnOpeningThatChangedItsSizeIsOver) {
  sample.items = {command("Stop")};
  panel.open(service);
  const int measurings = sample.measurings;
  panel.callMenu(service, "Event", {0, "closed", QVariant::fromValue(QDBusVariant(0)), 0U});
  EXPECT_TRUE(waitFor([&] { return sample.measurings > measurings; }));
}

TEST_F(DBusMenuTest, IsMeasuredAgainAfterAChoiceThatARootLineNames) {
  const auto shown = panel.open(service);
  const int measurings = sample.measurings;
  panel.click(service, shown[2].children[1].id);
  EXPECT_TRUE(waitFor([&] { return sample.measurings > measurings; }));
}

TEST_F(DBusMenuTest, AnnouncesChangesOfTheRootAsPropertiesAlone) {
  panel.open(service);
  panel.signalNames.clear();
  sample.items = {separator(), command("Stop")};
  const QDBusMessage reply = panel.callMenu(service, "AboutToShow", {0});
  EXPECT_EQ(reply.arguments().value(0), QVariant(false)) << "nothing to fetch again";
  EXPECT_TRUE(waitFor([&] { return !panel.signalNames.isEmpty(); }));
  EXPECT_EQ(panel.signalNames, QStringList{"ItemsPropertiesUpdated"});
}

TEST_F(DBusMenuTest, AnnouncesOtherLinesOfASubmenu) {
  const auto before = panel.open(service);
  panel.signalNames.clear();
  sample.items[2].submenu = submenu("", {choice("x", "x"), separator(), choice("y", "y")}).submenu;
  panel.open(service);
  EXPECT_TRUE(waitFor([&] { return panel.signalNames.contains("LayoutUpdated"); }));
  EXPECT_EQ(labels(panel.layout(service, before[2].id).children), QStringList({"x", "", "y"}));
}

TEST_F(DBusMenuTest, OpeningASubmenuDoesNotFillTheMenuAgain) {
  const auto shown = panel.open(service);
  const int updates = sample.updates;
  const QDBusMessage reply = panel.callMenu(service, "AboutToShow", {shown[2].id});
  EXPECT_EQ(reply.arguments().value(0), QVariant(false));
  EXPECT_EQ(sample.updates, updates);
}

TEST_F(DBusMenuTest, AClickIsCarriedOutOnceAfterItsNotice) {
  const auto shown = panel.open(service);
  panel.click(service, shown[2].children[1].id);
  ASSERT_TRUE(waitFor([&] { return !sample.performed.empty(); }));
  runEvents();
  ASSERT_EQ(sample.performed.size(), 1U);
  EXPECT_EQ(sample.performed[0].action, MenuAction::selectVoice);
  EXPECT_EQ(std::get<QString>(sample.performed[0].representedObject), "id-c");
  EXPECT_EQ(order, QStringList{"chosen"});
}

TEST_F(DBusMenuTest, AChoiceIsTheItemThatWasShown) {
  const auto shown = panel.open(service);
  sample.menu.items.clear();  // Rebuilt for something else meanwhile.
  panel.click(service, shown[4].id);
  ASSERT_TRUE(waitFor([&] { return !sample.performed.empty(); }));
  EXPECT_EQ(sample.performed[0].action, MenuAction::quit);
}

TEST_F(DBusMenuTest, DisabledHiddenAndVanishedLinesDoNothing) {
  const auto shown = panel.open(service);
  const int vanished = shown[2].children[0].id;
  sample.items = {command("only")};
  sample.items.push_back(disabled("note"));
  const auto now = panel.open(service);
  panel.click(service, now[1].id);
  panel.click(service, shown[4].id);
  panel.click(service, vanished);
  panel.click(service, 0);
  panel.click(service, now[0].id);  // In order: this one comes last.
  ASSERT_TRUE(waitFor([&] { return !sample.performed.empty(); }));
  runEvents();
  ASSERT_EQ(sample.performed.size(), 1U);
  EXPECT_EQ(sample.performed[0].title, "only");
}

TEST_F(DBusMenuTest, EventGroupTellsUnknownLines) {
  const auto shown = panel.open(service);
  const QDBusVariant data{QString()};
  const QList<MenuEvent> events{{shown[4].id, "clicked", data, 0}, {99999, "clicked", data, 0}};
  const QDBusMessage reply = panel.callMenu(service, "EventGroup", {QVariant::fromValue(events)});
  EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{99999});
  ASSERT_TRUE(waitFor([&] { return !sample.performed.empty(); }));
  EXPECT_EQ(sample.performed[0].action, MenuAction::quit);
}

TEST_F(DBusMenuTest, AnswersForPropertiesByNameAndGroup) {
  const auto shown = panel.open(service);
  QDBusMessage reply = panel.callMenu(service, "GetProperty", {shown[1].id, "enabled"});
  EXPECT_EQ(reply.arguments().value(0).value<QDBusVariant>().variant(), QVariant(false));
  const QList<int> wanted{shown[0].id, 99999};
  reply = panel.callMenu(service, "GetGroupProperties",
                         {QVariant::fromValue(wanted), QStringList{"label"}});
  const auto group = qdbus_cast<QList<ItemProperties>>(reply.arguments().value(0));
  ASSERT_EQ(group.size(), 1);
  EXPECT_EQ(group[0].properties, QVariantMap({{"label", "Speak Selection\t⌥ Esc"}}));
  EXPECT_THAT(panel.layout(service, 0, 0).children, ::testing::IsEmpty());
}

// How many lines below the root a depth gives, those of its submenus among them.
int linesWithin(const QList<LayoutItem>& items) {
  int count = 0;
  for (const LayoutItem& item : items) count += 1 + linesWithin(item.children);
  return count;
}

TEST_F(DBusMenuTest, AnyNegativeDepthIsEverythingBelow) {
  const auto root = panel.layout(service).children;
  const int all = linesWithin(root);
  EXPECT_EQ(all, root.size() + 2) << "those of the submenu too";
  for (const int depth : {-2, std::numeric_limits<int>::min() + 1, std::numeric_limits<int>::min()})
    EXPECT_EQ(linesWithin(panel.layout(service, 0, depth).children), all) << depth;
  EXPECT_EQ(linesWithin(panel.layout(service, 0, std::numeric_limits<int>::max()).children), all);
  EXPECT_EQ(linesWithin(panel.layout(service, 0, 1).children), root.size());
}

TEST_F(DBusMenuTest, RefusesNonsense) {
  const auto isError = [&](const char* method, const QVariantList& args) {
    return panel.callMenu(service, method, args).type() == QDBusMessage::ErrorMessage;
  };
  EXPECT_TRUE(isError("GetLayout", {99999, -1, QStringList()}));
  EXPECT_TRUE(isError("GetLayout", {"0"}));
  EXPECT_TRUE(isError("AboutToShow", {-5}));
  EXPECT_TRUE(isError("GetProperty", {0, "no-such"}));
  EXPECT_TRUE(isError("Explode", {}));
  EXPECT_EQ(labels(panel.open(service)).size(), 5) << "and goes on";
}

}  // namespace
}  // namespace tavin::tray
