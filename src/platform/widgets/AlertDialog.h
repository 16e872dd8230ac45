#pragma once

#include <QDialog>

#include "platform/AlertPresenter.h"

class QHBoxLayout;
class QLineEdit;

namespace tavin::widgets {

// One alert on the screen: its texts as they are, its buttons in their order from the left, the
// first as the default. Main thread only.
class AlertDialog final : public QDialog {
 public:
  explicit AlertDialog(const Alert& alert);

  // The user's answer, once finished. The field is wiped, so ask once.
  AlertResponse takeResponse();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  QHBoxLayout* makeButtons(const QStringList& titles);

  QLineEdit* field_ = nullptr;
  int button_ = 0;
};

}  // namespace tavin::widgets
