#include "features/FeatureDrawing.h"

#include "features/VisibleLines.h"
#include "levels/TerrainStore.h"
#include "texts/Numbers.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <utility>

namespace vardenix {

namespace {

// Letters of a name. Longer ones are no names, and reach beyond any picture.
constexpr size_t LongestName = 1000;
// No letter of a name is wider than so many times its font's size.
constexpr double WidestLetter = 3;
constexpr double DotsPerPoint = 96.0 / 72;

// Beyond it only infinity is farther; sums and products of two of them are still numbers.
constexpr double Farthest = 1e100;

// The pixel before it is rounded.
PicturePoint RealPixel(const MapView& view, const FeaturePoint& point) {
    const double cell = view.CellSize();
    const double x = std::clamp(point.X, -Farthest, Farthest);
    const double y = std::clamp(point.Y, -Farthest, Farthest);
    return {(x - view.MapLeftX) * cell + cell / 2,
            view.PictureHeight() - (y - view.MapBottomY) * cell - cell / 2};
}

// One kind's drawing, on one view.
struct KindDrawing {
    DrawingSurface& Surface;
    const MapView& View;
    uint32_t Color;
    int32_t Size;
    std::vector<PicturePoint> Pixels = {}; // of the feature at hand

    // The picture, and `reach` pixels round it.
    RealBounds Picture(double reach) const {
        return {-reach, -reach, View.PictureWidth() + reach,
                View.PictureHeight() + reach};
    }
    bool Touches(const Feature& feature, double reach) const;
    void Convert(const Feature& feature);
};

bool KindDrawing::Touches(const Feature& feature, double reach) const {
    if (feature.PointCount < 1)
        return false;
    RealBounds posts{Farthest, Farthest, -Farthest, -Farthest};
    const auto add = [&posts](const FeaturePoint& point) {
        posts.Left = std::min(posts.Left, point.X);
        posts.Right = std::max(posts.Right, point.X);
        posts.Top = std::min(posts.Top, point.Y);
        posts.Bottom = std::max(posts.Bottom, point.Y);
    };
    for (const FeaturePoint& point : feature.Points)
        add(point);
    if (static_cast<int64_t>(feature.Points.size()) < feature.PointCount)
        add({});
    // Upward on the map is downward on the picture.
    const PicturePoint least = RealPixel(View, {posts.Left, posts.Bottom});
    const PicturePoint most = RealPixel(View, {posts.Right, posts.Top});
    return Picture(reach).Meets({least.X, least.Y, most.X, most.Y});
}

void KindDrawing::Convert(const Feature& feature) {
    Pixels.clear();
    for (const FeaturePoint& point : feature.Points)
        Pixels.push_back(FeaturePixel(View, point));
    // However many are missing, they all lie in one place.
    const int64_t missing =
        feature.PointCount - static_cast<int64_t>(feature.Points.size());
    for (int64_t i = 0; i < std::min<int64_t>(missing, 2); ++i)
        Pixels.push_back(FeaturePixel(View, {}));
}

// Coasts, rivers and roads.
void DrawLines(KindDrawing& drawing, std::span<const Feature> features) {
    drawing.Surface.SetPen(drawing.Color, drawing.Size);
    // A pen's square end reaches out by less than its width.
    const double reach = drawing.Size + 2;
    for (const Feature& feature : features) {
        if (!drawing.Touches(feature, reach))
            continue;
        drawing.Convert(feature);
        ForEachVisibleStretch(drawing.Pixels, drawing.Picture(reach),
                              [&](std::span<const PicturePoint> stretch) {
                                  drawing.Surface.Polyline(stretch);
                              });
    }
}

void DrawCities(KindDrawing& drawing, std::span<const Feature> features) {
    drawing.Surface.SetPen(drawing.Color, drawing.Size);
    drawing.Surface.SetFill(FillStyle::CrossHatch, drawing.Color);
    for (const Feature& feature : features) {
        if (!drawing.Touches(feature, drawing.Size + 2))
            continue;
        drawing.Convert(feature);
        const std::vector<PicturePoint> corners = NearPolygon(drawing.Pixels);
        if (corners.size() > 1)
            drawing.Surface.Polygon(corners);
    }
}

// Airports and labels: a mark, and the name above it to the right.
void DrawMarksWithNames(KindDrawing& drawing, std::span<const Feature> features,
                        const FontChoice& font) {
    DrawingSurface& surface = drawing.Surface;
    surface.SetPen(drawing.Color, 1);
    surface.SetFill(FillStyle::Solid, drawing.Color);
    surface.SetFont(font);
    const double letter = std::max(1.0F, font.Size) * DotsPerPoint * WidestLetter;
    const double s = drawing.Size;
    for (const Feature& feature : features) {
        const std::string_view name =
            std::string_view(feature.Text).substr(0, LongestName);
        // Two letters more, for what leans out of the text.
        const double reach = s + 2 + (static_cast<double>(name.size()) + 2) * letter;
        if (feature.PointCount < 1)
            continue;
        const FeaturePoint first =
            feature.Points.empty() ? FeaturePoint{} : feature.Points.front();
        const auto [x, y] = FeaturePixel(drawing.View, first);
        if (!drawing.Picture(reach).Meets({x, y, x, y}))
            continue;
        surface.Ellipse({x - s, y - s}, {x + s, y + s});
        if (name.empty())
            continue;
        const std::string text = Utf8FromBytes(name);
        const int32_t height = surface.MeasureText(text).Height;
        surface.DrawRimmedText({x + s, y - s - height}, text, font.Color,
                               RimOf(font.Color));
    }
}

} // namespace

const FeatureStyle& StyleOf(const Configuration& settings, FeatureKind kind) {
    switch (kind) {
    case FeatureKind::Airport:
        return settings.Airports;
    case FeatureKind::City:
        return settings.City;
    case FeatureKind::Coast:
        return settings.Coast;
    case FeatureKind::Label:
        return settings.Labels;
    case FeatureKind::River:
        return settings.Rivers;
    case FeatureKind::Road:
        break;
    }
    return settings.Roads;
}

FeatureStyle& StyleOf(Configuration& settings, FeatureKind kind) {
    return const_cast<FeatureStyle&>(StyleOf(std::as_const(settings), kind));
}

PicturePoint FeaturePixel(const MapView& view, const FeaturePoint& point) {
    const PicturePoint real = RealPixel(view, point);
    return {RoundHalfEven(real.X), RoundHalfEven(real.Y)};
}

void DrawnFeatures::FeatureDraw(DrawingSurface& surface, const MapView& view,
                                FeatureKind kind, bool flag) {
    const FeatureList& list = sources_.Features.Of(kind);
    if (!flag || list.size() < 2)
        return;
    const FeatureStyle& style = StyleOf(sources_.Settings, kind);
    KindDrawing drawing{surface, view, style.Color, FeatureSizeRange.Clamp(style.Size)};
    const auto features = std::span(list).subspan(1);
    switch (kind) {
    case FeatureKind::Airport:
        return DrawMarksWithNames(drawing, features, sources_.Settings.AirportsFont);
    case FeatureKind::Label:
        return DrawMarksWithNames(drawing, features, sources_.Settings.LabelsFont);
    case FeatureKind::City:
        return DrawCities(drawing, features);
    case FeatureKind::Coast:
    case FeatureKind::River:
    case FeatureKind::Road:
        return DrawLines(drawing, features);
    }
}

} // namespace vardenix
