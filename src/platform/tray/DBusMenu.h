#pragma once

#include <QTimer>

#include "platform/bus/BusObject.h"
#include "platform/tray/MenuLayout.h"

namespace tavin::tray {

class MenuSource;

// The menu as com.canonical.dbusmenu, for panels that draw it themselves. It is filled anew when a
// panel announces that the root is about to show, before that call is answered.
//
// GTK's panels announce it when they have opened the menu already, in the size that it had until
// then, and never measure it again. So it is also filled for a new panel, and a few times more in
// the seconds in which its lines come and go, as they do while the engine starts.
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
  // Whether the root holds other lines now, which the panel has to fetch.
  bool refresh();
  void keepFresh();
  void settle();
  void announce(const MenuLayout::Changes& changes);

  MenuSource& source_;
  MenuLayout layout_;
  uint revision_ = 1;
  QTimer settling_;
  bool open_ = false;  // As far as the panel tells.
};

}  // namespace tavin::tray
