#include <gmock/gmock.h>

#include "platform/copy/ClipboardTypes.h"

namespace tavin::copy {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ClipboardTypesTest, TextsComeFirstThenFilesThenDataThenPng) {
  EXPECT_THAT(clipboardAskingOrder({"image/bmp", "image/png", "private", "text/uri-list",
                                    "text/plain", "UTF8_STRING"}),
              ElementsAre(4, 5, 3, 2, 1, 0));
}

TEST(ClipboardTypesTest, QuestionsToTheOwnerAreNotAskedFor) {
  EXPECT_THAT(clipboardAskingOrder({"TARGETS", "TIMESTAMP", "DELETE", ""}), IsEmpty());
}

// Given back, it would announce pieces that never come, and whoever reads would wait for them.
TEST(ClipboardTypesTest, TheNameOfATransferInPiecesIsNoForm) {
  EXPECT_THAT(clipboardAskingOrder({"INCR", "STRING"}), ElementsAre(1));
}

}  // namespace
}  // namespace tavin::copy
