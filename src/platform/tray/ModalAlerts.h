#pragma once

#include <memory>

#include "platform/AlertPresenter.h"

namespace tavin {

// Alerts as dialogs. Needs a QApplication. Destroying the presenter closes what is open and runs no
// completion.
std::unique_ptr<AlertPresenter> createAlertPresenter();

}  // namespace tavin
