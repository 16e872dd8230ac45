#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/Eventually.h"
#include "platform/bus/SessionBus.h"
#include "platform/capture/AssembleCapture.h"
#include "platform/x11/CaptureBackEnd.h"
#include "platform/x11/TestKeyboard.h"
#include "platform/x11/X11CopyKey.h"

namespace tavin::test {

class ListLog final : public SystemLog {
 public:
  void write(const QString& line) override {
    const std::lock_guard lock(mutex_);
    lines_ << line;
  }
  QStringList lines() {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  std::mutex mutex_;
  QStringList lines_;
};

// As the factory puts it together on X11; none without a display.
inline std::optional<capture::Capture> captureOnX11(SystemLog& log) {
  auto clipboard = x11::createClipboard();
  auto windows = x11::createWindowSystem();
  if (!clipboard || !windows)
    return std::nullopt;
  return capture::assembleCapture(
      log, bus::sessionBus(),
      {std::move(windows), std::move(*clipboard), x11::X11CopyKey::create()});
}

// The back ends of capture in a real session, and a keyboard to select with.
class CaptureTest : public testing::Test {
 protected:
  static constexpr xcb_keycode_t kA = 38;
  static constexpr xcb_keycode_t kHome = 110;

  // What the selection reader does first, on a thread that is not the main one.
  std::optional<QString> selectedText() {
    std::optional<QString> text;
    std::thread queue([&] {
      const auto all = capture_->accessibility->createSystemWideElement();
      all->setMessagingTimeout(0.3F);
      const auto focused = all->copyAttributeValue("AXFocusedUIElement");
      if (!focused)
        return;
      const auto& element = std::get<std::shared_ptr<UIElement>>(*focused);
      if (const auto value = element->copyAttributeValue("AXSelectedText"))
        text = std::get<QString>(*value);
    });
    queue.join();
    return text;
  }
  bool canCopy() {
    bool can = false;
    std::thread queue([&] {
      can = capture_->keyboard->createKeyboardEvent(8, true) != nullptr;
      capture_->keyboard->createKeyboardEvent(8, false);
    });
    queue.join();
    return can;
  }
  // Repeats the selecting `action`, since a program takes keys a moment after it is shown.
  bool becomesSelected(const QString& text, const std::function<void()>& action) {
    return eventually(
        [&] {
          action();
          return eventually([&] { return selectedText() == text; }, 300);
        },
        30'000);
  }
  void selectAll() { keyboard_.type({key::leftControl, kA}); }
  QString fileWith(const QString& text) {
    QFile file(folder_.filePath("letter.txt"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    return file.fileName();
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  QTemporaryDir folder_;
  ListLog log_;
  TestKeyboard keyboard_;
  std::optional<capture::Capture> capture_ = captureOnX11(log_);
};

}  // namespace tavin::test
