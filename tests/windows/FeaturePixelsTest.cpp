// What is passed over of the features must change no pixel: the same features are drawn
// whole, however far they reach, and the two pictures are compared.
#include "features/FeatureDrawing.h"
#include "mapview/windows/QtDrawingSurface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vardenix {
namespace {

constexpr uint32_t Ground = 0xF0F0F0;

class FeaturePixelsTest : public testing::Test {
protected:
    FeaturePixelsTest() {
        view_.MapLeftX = 100;
        view_.MapBottomY = 200;
        view_.GridCells = 3;
        view_.TilePixels = 64;
        view_.ZoomPosts = 3; // a cell is no whole number of pixels
        surface_.Resize(view_.PictureWidth(), view_.PictureHeight());
    }

    double Anywhere(double from, double to) {
        return std::uniform_real_distribution(from, to)(random_);
    }
    int Below(int bound) {
        return static_cast<int>(random_() % static_cast<unsigned>(bound));
    }

    Feature AnyFeature(int points) {
        Feature feature;
        feature.PointCount = points;
        // Often the picture's own posts, else far round it.
        const bool near = Below(2) == 0;
        const double reach = near ? 3 : 60;
        const double middleX = Anywhere(100 - reach, 109 + reach);
        const double middleY = Anywhere(200 - reach, 209 + reach);
        for (int i = 0; i < points; ++i)
            feature.Points.push_back(
                {middleX + Anywhere(-8, 8), middleY + Anywhere(-8, 8)});
        return feature;
    }

    QImage DrawnByTheLayer(FeatureKind kind) {
        surface_.Clear(Ground);
        layer_.FeatureDraw(surface_, view_, kind, true);
        return surface_.Image().copy();
    }
    // Every point of every feature, straight from the description.
    QImage DrawnWhole(FeatureKind kind) {
        surface_.Clear(Ground);
        const FeatureStyle& style = StyleOf(settings_, kind);
        const bool mark = kind == FeatureKind::Airport || kind == FeatureKind::Label;
        surface_.SetPen(style.Color, mark ? 1 : style.Size);
        surface_.SetFill(mark ? FillStyle::Solid : FillStyle::CrossHatch, style.Color);
        surface_.SetFont(settings_.AirportsFont);
        const FeatureList& list = set_.Of(kind);
        for (size_t i = 1; i < list.size(); ++i) {
            std::vector<PicturePoint> pixels;
            for (const FeaturePoint& point : list[i].Points)
                pixels.push_back(Pixel(point));
            if (kind == FeatureKind::City)
                surface_.Polygon(pixels);
            else if (!mark)
                surface_.Polyline(pixels);
            else
                DrawMark(list[i], pixels[0], style.Size);
        }
        return surface_.Image().copy();
    }
    void DrawMark(const Feature& feature, PicturePoint at, double s) {
        surface_.Ellipse({at.X - s, at.Y - s}, {at.X + s, at.Y + s});
        const int height = surface_.MeasureText(feature.Text).Height;
        const double left = at.X + s;
        const double top = at.Y - s - height;
        constexpr uint32_t rim = 0xFFFFFF; // round black letters
        for (const PicturePoint beside : {PicturePoint{left - 1, top},
                                          {left + 1, top},
                                          {left, top - 1},
                                          {left, top + 1}})
            surface_.DrawText(beside, feature.Text, rim);
        surface_.DrawText({left, top}, feature.Text, settings_.AirportsFont.Color);
    }
    static PicturePoint Pixel(const FeaturePoint& point) {
        const double w = 64.0 / 3;
        return {std::nearbyint((point.X - 100) * w + w / 2),
                std::nearbyint((200 + 9 - point.Y) * w - w / 2)};
    }
    // Rows of features that are far from the picture are looked at too.
    static int Painted(const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) != (0xFF000000 | Ground) ? 1 : 0;
        return count;
    }

    std::mt19937 random_{11};
    MapView view_;
    Configuration settings_;
    FeatureSet set_;
    FeatureSwitches switches_;
    QtDrawingSurface surface_;
    DrawnFeatures layer_{{set_, switches_, settings_}};
};

TEST_F(FeaturePixelsTest, LinesAndCitiesAreThoseDrawnWhole) {
    for (const FeatureKind kind : {FeatureKind::Road, FeatureKind::City})
        for (const int size : {1, 2, 3, 8, 20}) {
            StyleOf(settings_, kind).Size = size;
            for (int round = 0; round < 8; ++round) {
                set_ = {};
                for (int i = 0; i < 4; ++i)
                    set_.Of(kind).push_back(AnyFeature(2 + Below(9)));
                const QImage whole = DrawnWhole(kind);
                ASSERT_EQ(DrawnByTheLayer(kind), whole) << size << ' ' << round;
            }
        }
}

TEST_F(FeaturePixelsTest, MarksAndNamesAreThoseDrawnWhole) {
    settings_.AirportsFont = {.Name = "Arial", .Size = 18, .Bold = true, .Italic = true};
    ASSERT_EQ(settings_.AirportsFont.Color, 0U);
    settings_.Airports.Size = 9;
    for (int round = 0; round < 60; ++round) {
        set_ = {};
        Feature feature = AnyFeature(1);
        feature.Text = "WWW Mjg";
        set_.Airports.push_back(feature);
        const QImage whole = DrawnWhole(FeatureKind::Airport);
        ASSERT_EQ(DrawnByTheLayer(FeatureKind::Airport), whole) << round;
    }
}

// Every painted pixel of a thin line lies on it or beside it, wherever its far end is.
TEST_F(FeaturePixelsTest, FarEndsDoNotBendALine) {
    for (const double far : {1e4, 1e5, 1e6, 1e9, 1e15}) {
        for (const double slope : {0.3, -0.7, 0.9}) {
            set_ = {};
            Feature road;
            road.PointCount = 2;
            road.Points = {{104, 204}, {104 + far, 204 + slope * far}};
            set_.Roads.push_back(road);
            const QImage image = DrawnByTheLayer(FeatureKind::Road);
            const PicturePoint from = Pixel(road.Points[0]);
            int columns = 0;
            for (int x = static_cast<int>(from.X); x < image.width(); ++x) {
                const double ideal = from.Y - slope * (x - from.X);
                for (int y = 0; y < image.height(); ++y)
                    if (image.pixel(x, y) != (0xFF000000 | Ground)) {
                        ++columns;
                        ASSERT_NEAR(y, ideal, 1.01) << far << ' ' << slope << ' ' << x;
                    }
            }
            EXPECT_GT(columns, 80) << far << ' ' << slope;
        }
    }
}

TEST_F(FeaturePixelsTest, ACityRoundEverythingFillsThePicture) {
    settings_.City.Size = 3;
    for (const double far : {50.0, 1e5, 1e12}) {
        set_ = {};
        Feature city;
        city.PointCount = 4;
        city.Points = {
            {-far, -far}, {far + 300, -far}, {far + 300, far + 300}, {-far, far + 300}};
        set_.Cities.push_back(city);
        const QImage image = DrawnByTheLayer(FeatureKind::City);
        // Hatched, and no outline anywhere.
        EXPECT_GT(Painted(image), 192 * 192 / 8) << far;
        EXPECT_LT(Painted(image), 192 * 192 / 2) << far;
    }
}

} // namespace
} // namespace vardenix
