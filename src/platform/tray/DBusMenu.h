#pragma once

#include <QTimer>

#include "platform/bus/BusObject.h"
#include "platform/tray/NumberedMenu.h"

namespace tavin::tray {

class MenuSource;

// The menu as com.canonical.dbusmenu, for panels that draw it themselves. It is filled again when a
// panel announces that the root is about to show, before that call is answered.
//
// GTK's panels announce it when they have opened the menu already, in the size that it had until
// then, and never measure it again. So its lines are also laid out for a new panel, after a choice
// that changes them and after an opening that did, a few times in the seconds that follow, until
// the panel shows the menu: from then on it keeps what it shows, also where no panel tells that it
// closes.
//
// Main thread only.
class DBusMenu final : public bus::BusObject {
 public:
  static constexpr auto path = "/MenuBar";

  // `source` must outlive this object.
  DBusMenu(const QDBusConnection& bus, MenuSource& source);

  // Call when a panel is about to fetch the menu for the first time.
  void prepare();

 protected:
  QVariantMap properties() const override;

 private:
  using Answer = std::optional<QVariantList>;
  Answer getLayout(const QVariantList& arguments) const;
  Answer getGroupProperties(const QVariantList& arguments) const;
  Answer getProperty(const QVariantList& arguments) const;
  Answer singleEvent(const QVariantList& arguments);
  Answer eventGroup(const QVariantList& arguments);
  Answer aboutToShow(const QVariantList& arguments);
  Answer aboutToShowGroup(const QVariantList& arguments);

  bool handleEvent(int id, const QString& name);
  // For an opening; whether the root holds other lines now, which the panel has to fetch.
  bool refresh();
  // The same unasked.
  void measure();
  NumberedMenu::Changes take(const Menu* menu);
  void keepMeasured();
  void settle();
  void closed();
  void announce(const NumberedMenu::Changes& changes);

  MenuSource& source_;
  NumberedMenu layout_;
  uint revision_ = 1;
  QTimer settling_;
  bool resized_ = false;  // By the last opening.
};

}  // namespace tavin::tray
