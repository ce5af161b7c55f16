#include "world/WorldShapes.h"

#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

using Form = WorldShape::Form;

// Posts of 100 by 50 units, from 1000, 2000 on.
const TheaterPlace Place{"EPSG:32632", 1000, 2000, 100, 50, false};

FeatureSet FeaturesOf(const WorldShape& shape, const KindsOfWords& kinds = {}) {
    FeatureSet features;
    std::map<std::string, int64_t> unknown;
    AddShapes({shape}, Place, kinds, features, unknown);
    EXPECT_TRUE(unknown.empty());
    return features;
}

TEST(WorldShapes, APostsMiddleIsAWholeNumber) {
    const auto set =
        FeaturesOf({Form::Line, "road", "", 3, -1, {{1050, 2025}, {1200, 2100}}});
    ASSERT_EQ(set.Roads.size(), 2U);
    EXPECT_EQ(set.Roads[1].Points, (std::vector<FeaturePoint>{{0, 0}, {1.5, 1.5}}));
    EXPECT_EQ(set.Roads[1].PointCount, 2);
    EXPECT_EQ(set.Roads[1].Value, 3);
}

TEST(WorldShapes, FeaturesComeBack) {
    FeatureSet before;
    before.Airports.push_back({1, {{3, 4}}, 7, "Caf\xE9 One"});
    before.Cities.push_back({4, {{0, 0}, {2, 0}, {2, 2}, {0, 0}}, 1, ""});
    before.Cities.push_back({3, {{0, 0}, {2, 0}, {2, 2}}, 1, ""});
    before.Cities.push_back({1, {{5, 5}}, 1, ""});
    before.Labels.push_back({2, {{1, 1}, {9, 9}}, 0, "Two places"});
    before.Rivers.push_back({2, {{1, 2}, {3, 4}}, -5, ""});
    FeatureSet after;
    std::map<std::string, int64_t> unknown;
    for (const FeatureKind kind : FeatureKinds)
        for (size_t i = 1; i < before.Of(kind).size(); ++i) {
            auto shape = ShapeOf(before.Of(kind)[i], kind, Place);
            ASSERT_TRUE(shape);
            // As maps hold areas.
            if (shape->Shape == Form::Area &&
                !(shape->Points.front() == shape->Points.back()))
                shape->Points.push_back(shape->Points.front());
            AddShapes({*shape}, Place, {}, after, unknown);
        }
    EXPECT_EQ(after, before);
    EXPECT_TRUE(unknown.empty());
}

TEST(WorldShapes, PointsThatALineDoesNotHaveLieAtTheOrigin) {
    const auto shape = ShapeOf({2, {{1, 1}}, 0, ""}, FeatureKind::Coast, Place);
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->Points, (std::vector<FeaturePoint>{{1150, 2075}, {1050, 2025}}));
    EXPECT_FALSE(ShapeOf({0, {}, 0, ""}, FeatureKind::Coast, Place));
    EXPECT_FALSE(ShapeOf({-3, {}, 0, ""}, FeatureKind::Coast, Place));
}

TEST(WorldShapes, KindsAreKeywordsOrWhatTheUserSays) {
    EXPECT_EQ(KindOfWord("Cities"), FeatureKind::City);
    EXPECT_EQ(KindOfWord("river"), FeatureKind::River);
    EXPECT_FALSE(KindOfWord("stream"));
    FeatureSet features;
    std::map<std::string, int64_t> unknown;
    const WorldShape stream{Form::Line, "stream", "", 0, -1, {{0, 0}, {1, 1}}};
    AddShapes({stream, stream}, Place, {}, features, unknown);
    EXPECT_EQ(unknown, (std::map<std::string, int64_t>{{"stream", 2}}));
    EXPECT_EQ(features.Count(), 0U);
    EXPECT_EQ(FeaturesOf(stream, {{"stream", FeatureKind::River}}).Rivers.size(), 2U);
    EXPECT_EQ(FeaturesOf(stream, {{"stream", std::nullopt}}).Count(), 0U);
    const WorldShape road{Form::Line, "road", "", 0, -1, {{0, 0}, {1, 1}}};
    EXPECT_EQ(FeaturesOf(road, {{"road", FeatureKind::Coast}}).Coasts.size(), 2U);
}

TEST(WorldShapes, NamedPlacesLieInTheMiddleOfAreas) {
    const auto set =
        FeaturesOf({Form::Area,
                    "airport",
                    "Zürich",
                    0,
                    -1,
                    {{1050, 2025}, {1450, 2025}, {1450, 2125}, {1050, 2025}}});
    ASSERT_EQ(set.Airports.size(), 2U);
    EXPECT_EQ(set.Airports[1].Points, (std::vector<FeaturePoint>{{2, 1}}));
    EXPECT_EQ(set.Airports[1].Text, "Z\xFCrich");
}

TEST(WorldShapes, HolesAreCoastsButNoCities) {
    const WorldShape hole{Form::Hole, "city", "", 0, -1, {{0, 0}, {1, 1}, {0, 0}}};
    EXPECT_EQ(FeaturesOf(hole).Count(), 0U);
    EXPECT_EQ(FeaturesOf(hole, {{"city", FeatureKind::Coast}}).Coasts.size(), 2U);
}

TEST(WorldShapes, LongLinesAreCutAndLongAreasThinned) {
    std::vector<FeaturePoint> points(70000);
    for (size_t i = 0; i < points.size(); ++i)
        points[i] = {1000 + 100 * static_cast<double>(i), 2000};
    const auto coasts = FeaturesOf({Form::Line, "coast", "", 0, -1, points}).Coasts;
    ASSERT_EQ(coasts.size(), 4U);
    EXPECT_EQ(coasts[1].PointCount, 32767);
    EXPECT_EQ(coasts[1].Points.back(), coasts[2].Points.front());
    EXPECT_EQ(coasts[3].Points.back().X, 69998.5);
    const auto cities = FeaturesOf({Form::Area, "city", "", 0, -1, points}).Cities;
    ASSERT_EQ(cities.size(), 2U);
    EXPECT_LE(cities[1].PointCount, 32767);
    EXPECT_GT(cities[1].PointCount, 20000);
    EXPECT_EQ(cities[1].Points.back(), coasts[3].Points.back());
}

TEST(WorldShapes, BytesThatEndInTheMiddleAreRefused) {
    const WorldShape shape{Form::Line, "coast", "name", 4, 2, {{1, 2}, {3, 4}}};
    const std::string bytes = BytesOfShapes({shape, shape});
    const auto read = [&](size_t length) {
        return ShapesFromBytes(std::as_bytes(std::span(bytes).first(length)), "shapes");
    };
    const auto whole = read(bytes.size());
    ASSERT_EQ(whole.size(), 2U);
    EXPECT_EQ(whole[1].Kind, "coast");
    EXPECT_EQ(whole[1].Name, "name");
    EXPECT_EQ(whole[1].Points, shape.Points);
    for (size_t length = 1; length < bytes.size(); ++length)
        if (length != bytes.size() / 2) {
            EXPECT_THROW(read(length), RuntimeError) << length;
        }
}

} // namespace
} // namespace vardenix::tests
