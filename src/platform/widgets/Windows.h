#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "platform/gui/Channel.h"
#include "platform/gui/Messages.h"

namespace tavin::widgets {

class AlertDialog;
class XEmbedIcon;

// What the program that shows Tavin's windows shows, as it is told through a socket. Needs a
// QApplication. Main thread only.
class Windows : private QObject {
 public:
  // `ended` is called from the event loop when Tavin has closed the socket or sent no message.
  Windows(posix::FileDescriptor socket, std::function<void()> ended);
  ~Windows() override;

 private:
  void received(const QByteArray& message);
  void obey(const gui::Ping&);
  void obey(const gui::Finish&);
  void obey(const gui::ShowAlert& request);
  void obey(const gui::BringAlertToFront& request);
  void obey(const gui::CloseAlert&);
  void obey(const gui::ShowMenu& request);
  void obey(const gui::CloseMenu&);
  void obey(const gui::ShowIcon& request);
  void answerAlert(quint32 id);
  void tell(const gui::Event& event);
  void finishUnlessNeeded();

  const std::function<void()> ended_;
  std::unique_ptr<AlertDialog> dialog_;
  QPointer<QMenu> menu_;
  std::unique_ptr<XEmbedIcon> icon_;
  bool finishing_ = false;
  gui::Channel channel_;
};

}  // namespace tavin::widgets
