#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "platform/windowlink/Channel.h"
#include "platform/windowlink/Messages.h"

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
  void obey(const windowlink::Ping&);
  void obey(const windowlink::Finish&);
  void obey(const windowlink::ShowAlert& request);
  void obey(const windowlink::BringAlertToFront& request);
  void obey(const windowlink::CloseAlert&);
  void obey(const windowlink::ShowMenu& request);
  void obey(const windowlink::CloseMenu&);
  void obey(const windowlink::ShowIcon& request);
  void answerAlert(quint32 id);
  void tell(const windowlink::Event& event);
  void finishUnlessNeeded();

  const std::function<void()> ended_;
  std::unique_ptr<AlertDialog> dialog_;
  QPointer<QMenu> menu_;
  std::unique_ptr<XEmbedIcon> icon_;
  bool finishing_ = false;
  windowlink::Channel channel_;
};

}  // namespace tavin::widgets
