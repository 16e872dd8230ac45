#pragma once

#include <QByteArray>
#include <QPoint>
#include <QString>
#include <optional>
#include <tuple>
#include <variant>
#include <vector>

#include "platform/AlertPresenter.h"

namespace tavin::windowlink {

// What Tavin and the program that shows its windows say to each other. Neither trusts what it is
// told: a message that is cut off, goes on after its end or says more than it may is none.

// How a line of the menu shows its state.
enum class Toggle : quint8 { none, checkmark, radio };

// A line of the menu, with its texts as they are drawn.
struct MenuLine {
  enum class Kind : quint8 { command, submenu, separator };

  Kind kind = Kind::command;
  QString title = {};
  Toggle toggle = Toggle::none;
  bool checked = false;
  bool enabled = true;
  quint32 number = 0;                // Of a command; told when it is chosen.
  std::vector<MenuLine> lines = {};  // Of a submenu.

  static auto fields(auto& self) {
    return std::tie(self.kind, self.title, self.toggle, self.checked, self.enabled, self.number,
                    self.lines);
  }
};

// A `token` is what the desktop gave the user's action that a window answers. An `id` tells an
// answer to what is open from one to what was open before.
struct ShowAlert {
  quint32 id = 0;
  Alert alert;
  bool inFront = false;
  QString token;

  static auto fields(auto& self) {
    return std::tie(self.id, self.alert.messageText, self.alert.informativeText, self.alert.buttons,
                    self.alert.secureField, self.inFront, self.token);
  }
};
struct BringAlertToFront {
  QString token;
  static auto fields(auto& self) { return std::tie(self.token); }
};
struct CloseAlert {
  static auto fields(auto&) { return std::tie(); }
};
struct ShowMenu {
  quint32 id = 0;
  std::optional<QPoint> position;  // None is at the icon in an old-style tray, else at the pointer.
  std::vector<MenuLine> lines;
  QString token;

  static auto fields(auto& self) {
    return std::tie(self.id, self.position, self.lines, self.token);
  }
};
struct CloseMenu {
  static auto fields(auto&) { return std::tie(); }
};
// In an old-style tray. Without a symbol there is none any more.
struct ShowIcon {
  QString symbol;
  QString toolTip;
  static auto fields(auto& self) { return std::tie(self.symbol, self.toolTip); }
};
struct Ping {
  static auto fields(auto&) { return std::tie(); }
};
// Nothing is to be shown any more; answered as soon as nobody else needs the program either.
struct Finish {
  static auto fields(auto&) { return std::tie(); }
};
using Request = std::variant<Ping, Finish, ShowAlert, BringAlertToFront, CloseAlert, ShowMenu,
                             CloseMenu, ShowIcon>;

struct Pong {
  static auto fields(auto&) { return std::tie(); }
};
struct Finished {
  static auto fields(auto&) { return std::tie(); }
};
struct AlertAnswered {
  quint32 id = 0;
  AlertResponse response;
  static auto fields(auto& self) {
    return std::tie(self.id, self.response.button, self.response.text);
  }
};
struct MenuClosed {
  quint32 id = 0;
  std::optional<quint32> chosen;  // The number of a command.
  static auto fields(auto& self) { return std::tie(self.id, self.chosen); }
};
struct IconClicked {
  static auto fields(auto&) { return std::tie(); }
};
using Event = std::variant<Pong, Finished, AlertAnswered, MenuClosed, IconClicked>;

QByteArray encode(const Request& request);
QByteArray encode(const Event& event);
std::optional<Request> decodeRequest(const QByteArray& message);
std::optional<Event> decodeEvent(const QByteArray& message);

}  // namespace tavin::windowlink
