#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <memory>

#include "platform/x11/ClipboardOwner.h"
#include "platform/x11/X11Pasteboard.h"

namespace tavin::x11 {

// The clipboard of a real display, which the test's own programs own and read.
class X11PasteboardTest : public testing::Test {
 protected:
  X11PasteboardTest() : server_(ClipboardServer::create()) {
    pasteboard_ = std::make_unique<X11Pasteboard>(SelectionReader::create(), server_);
  }
  test::Targets read() {
    const auto items = pasteboard_->pasteboardItems();
    if (!items || items->size() != 1)
      return {{"(no item)", {}}};
    test::Targets targets;
    for (const auto& [name, bytes] : items->front().types)
      targets.emplace_back(name.toStdString(), bytes);
    return targets;
  }
  void copyBySomeoneElse() {
    const test::ClipboardOwner other(test::Targets{{"UTF8_STRING", "something else"}});
    EXPECT_EQ(pasteboard_->string(), "something else");
  }
  void expectServed(const test::Targets& targets) {
    QStringList names;
    for (const auto& [name, bytes] : targets) {
      names << QString::fromStdString(name);
      EXPECT_TRUE(test::pasted(names.last()) == bytes) << name;
    }
    EXPECT_EQ(test::pastedTargets(),
              QStringList({"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS"}) + names);
  }

  std::unique_ptr<Connection> connection_ = Connection::open();
  std::shared_ptr<ClipboardServer> server_;
  std::unique_ptr<X11Pasteboard> pasteboard_;
};

}  // namespace tavin::x11
