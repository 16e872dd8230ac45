#pragma once

#include <memory>

#include "platform/AlertPresenter.h"

namespace tavin {

namespace windowlink {
class WindowProgram;
}

// Alerts one after the other, each shown by the program for windows; where that ends, the alert was
// closed. Destroying the presenter closes what is open and runs no completion.
std::unique_ptr<AlertPresenter> createAlertPresenter(
    std::shared_ptr<windowlink::WindowProgram> program);

}  // namespace tavin
