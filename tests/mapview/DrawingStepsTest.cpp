// Steps done together, in bands, against each done on the whole picture at once.
#include "mapview/DrawingSteps.h"

#include "support/PictureMaker.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vardenix {
namespace {

using tests::PixelsOf;
using Kind = DrawingStep::Kind;

// Shows in which order it was laid on: what is there counts.
class Stripes : public Stamp {
public:
    void LayOver(const RasterView& picture, int32_t left, int32_t top, uint32_t color,
                 uint32_t other) const override {
        for (int32_t y = std::max(top, 0); y < std::min(top + 9, picture.Height); ++y)
            for (int32_t x = std::max(left, 0); x < std::min(left + 30, picture.Width);
                 ++x) {
                uint32_t& pixel = picture.Row(y)[x];
                pixel = pixel * 3 + ((y - top) % 2 == 0 ? color : other);
            }
    }
};

class Steps : public testing::Test {
protected:
    static constexpr int Width = 640;
    static constexpr int Height = 500;

    Raster Ground() const {
        Raster raster(Width, Height);
        for (int y = 0; y < Height; ++y)
            for (int x = 0; x < Width; ++x)
                raster.Row(y)[x] = OpaqueBlack | tests::Speckled(x, y);
        return raster;
    }
    DrawingStep RandomStep() {
        const auto below = [this](int end) {
            return static_cast<int32_t>(random_() % static_cast<unsigned>(end));
        };
        DrawingStep step;
        step.What = static_cast<Kind>(below(6));
        step.Alpha = static_cast<uint8_t>(below(256));
        step.Color = OpaqueBlack | static_cast<uint32_t>(random_());
        step.Other = OpaqueBlack | static_cast<uint32_t>(random_());
        step.X = below(Width + 60) - 40;
        step.Y = below(Height + 60) - 40;
        step.Box = {step.X, step.Y, step.X + below(90), step.Y + below(90)};
        if (step.What == Kind::Frame)
            step.X = 1 + below(4);
        if (step.What == Kind::Lay)
            step.Box = {step.X, step.Y, step.X + 30, step.Y + 9};
        step.Pixels = &tile_;
        step.Drawn = &stripes_;
        return step;
    }

    std::mt19937 random_{4};
    Raster tile_ = [] {
        Raster tile(40, 40);
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x)
                tile.Row(y)[x] = tests::Speckled(y, x) | (x % 3 == 0 ? 0 : OpaqueBlack);
        return tile;
    }();
    Stripes stripes_;
};

TEST_F(Steps, BandsGiveThePictureOfOneAfterTheOther) {
    DrawingSteps together;
    Raster banded = Ground();
    Raster whole = Ground();
    for (const int count : {0, 1, 60, 3000}) {
        for (int i = 0; i < count; ++i) {
            const DrawingStep step = RandomStep();
            together.Add(step);
            DoStep(whole.View(), step);
        }
        together.Do(banded.View());
        EXPECT_TRUE(together.IsEmpty());
        ASSERT_TRUE(PixelsOf(banded) == PixelsOf(whole)) << count;
    }
}

TEST_F(Steps, BandsMakeUpTheRowsAndShareNone) {
    for (const auto& [first, last] :
         {std::pair{0, Height}, {17, 18}, {-5, 9000}, {3, 3}}) {
        Raster raster(Width, Height, 0);
        InBands(raster.View(), first, last, [](const RasterView& band, int32_t top) {
            for (int32_t y = 0; y < band.Height; ++y)
                band.Row(y)[0] += static_cast<uint32_t>(top + y) + 1;
        });
        for (int y = 0; y < Height; ++y)
            ASSERT_EQ(raster.Row(y)[0],
                      y >= first && y < last ? static_cast<uint32_t>(y) + 1 : 0u);
    }
}

TEST_F(Steps, DroppedStepsAreNotDone) {
    DrawingSteps together;
    together.Add(RandomStep());
    together.Drop();
    Raster raster = Ground();
    together.Do(raster.View());
    EXPECT_TRUE(PixelsOf(raster) == PixelsOf(Ground()));
}

} // namespace
} // namespace vardenix
