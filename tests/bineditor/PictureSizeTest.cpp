#include "bineditor/PictureSize.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

TEST(PictureSize, IsOnePixelOrMoreAndSaysItsBoxOtherwise) {
    EXPECT_EQ(PictureSizeOf("M Tile Size", "1"), 1);
    EXPECT_EQ(PictureSizeOf("M Tile Size", "32767"), 32767);
    for (const char* none : {"", "0", "000", "32768", "999999999"}) {
        try {
            PictureSizeOf("M Tile Size", none);
            ADD_FAILURE() << none;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.Detail().starts_with("M Tile Size")) << error.what();
        }
    }
}

} // namespace
} // namespace vardenix::tests
