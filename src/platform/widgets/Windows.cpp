#include "platform/widgets/Windows.h"

#include <QApplication>
#include <QClipboard>
#include <QTimer>
#include <utility>

#include "platform/ActivationToken.h"
#include "platform/widgets/AlertDialog.h"
#include "platform/widgets/BringToFront.h"
#include "platform/widgets/MenuWidget.h"
#include "platform/widgets/XEmbedIcon.h"

namespace tavin::widgets {
namespace {

// Tavin is to be trusted; an alert's text may be a long one.
constexpr quint32 longestRequest = 1U << 28;

// The token for the next window that is shown or brought to the front: there Qt looks for it.
void giveToQt(const QString& token) {
  if (!token.isEmpty())
    qputenv(activationTokenVariable, token.toUtf8());
}

}  // namespace

Windows::Windows(posix::FileDescriptor socket, std::function<void()> ended)
    : ended_(std::move(ended)),
      channel_(
          std::move(socket), longestRequest,
          [this](const QByteArray& message) { received(message); }, [this] { ended_(); }) {
  for (const auto changed : {&QClipboard::dataChanged, &QClipboard::selectionChanged})
    connect(QGuiApplication::clipboard(), changed, this, [this] { finishUnlessNeeded(); });
}

Windows::~Windows() { delete menu_; }

void Windows::received(const QByteArray& message) {
  const auto request = windowlink::decodeRequest(message);
  if (!request)
    return ended_();
  finishing_ = false;
  std::visit([this](const auto& kind) { obey(kind); }, *request);
}

void Windows::tell(const windowlink::Event& event) { channel_.send(windowlink::encode(event)); }

void Windows::obey(const windowlink::Ping&) { tell(windowlink::Pong()); }

void Windows::obey(const windowlink::Finish&) {
  finishing_ = true;
  finishUnlessNeeded();
}

// What the user copied or marked in an alert would go with the program.
void Windows::finishUnlessNeeded() {
  const QClipboard& clipboard = *QGuiApplication::clipboard();
  if (finishing_ && !clipboard.ownsClipboard() && !clipboard.ownsSelection())
    tell(windowlink::Finished());
}

void Windows::obey(const windowlink::ShowAlert& request) {
  giveToQt(request.token);
  dialog_ = std::make_unique<AlertDialog>(request.alert);
  connect(
      dialog_.get(), &QDialog::finished, this, [this, id = request.id] { answerAlert(id); },
      // Two keys at once may finish it twice.
      Qt::SingleShotConnection);
  dialog_->show();
  if (request.inFront)
    bringToFront(*dialog_);
}

// From the event loop: the dialog is still in its own code when it says that it is finished.
void Windows::answerAlert(quint32 id) {
  QTimer::singleShot(0, dialog_.get(), [this, id] {
    const AlertResponse response = dialog_->takeResponse();
    QTimer::singleShot(0, this, [dialog = dialog_.release()] { delete dialog; });
    tell(windowlink::AlertAnswered{id, response});
  });
}

void Windows::obey(const windowlink::BringAlertToFront& request) {
  giveToQt(request.token);
  if (dialog_)
    bringToFront(*dialog_);
}

void Windows::obey(const windowlink::CloseAlert&) { dialog_.reset(); }

void Windows::obey(const windowlink::ShowMenu& request) {
  giveToQt(request.token);
  delete menu_;
  menu_ = new QMenu;
  menu_->setWindowTitle(QStringLiteral("Tavin"));
  menu_->setAccessibleName(QStringLiteral("Tavin"));
  const auto chosen = std::make_shared<std::optional<quint32>>();
  fillMenu(*menu_, request.lines, [chosen](quint32 number) { *chosen = number; });
  // From the event loop: a menu closes before it says what was chosen.
  connect(menu_, &QMenu::aboutToHide, this, [this, chosen, id = request.id] {
    QTimer::singleShot(0, menu_, [this, chosen, id] { tell(windowlink::MenuClosed{id, *chosen}); });
  });
  auto position = request.position;
  if (!position && icon_)
    position = icon_->placeForMenu(menu_->sizeHint());
  popUp(*menu_, position);
}

void Windows::obey(const windowlink::CloseMenu&) { delete menu_; }

void Windows::obey(const windowlink::ShowIcon& request) {
  if (request.symbol.isEmpty())
    return icon_.reset();
  if (!icon_)
    icon_ = std::make_unique<XEmbedIcon>([this] { tell(windowlink::IconClicked()); });
  icon_->setImage(request.symbol, request.toolTip);
}

}  // namespace tavin::widgets
