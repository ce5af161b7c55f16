#include "world/WorldShapes.h"

#include "files/BinaryReader.h"
#include "texts/Cutting.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace vardenix {

namespace {

constexpr size_t MostPoints = std::numeric_limits<int16_t>::max(); // of a feature

struct KindWords {
    FeatureKind Kind;
    const char* One;
    const char* Several;
};
constexpr std::array WordsOfKinds{KindWords{FeatureKind::Airport, "AIRPORT", "AIRPORTS"},
                                  KindWords{FeatureKind::City, "CITY", "CITIES"},
                                  KindWords{FeatureKind::Coast, "COAST", "COASTS"},
                                  KindWords{FeatureKind::Label, "LABEL", "LABELS"},
                                  KindWords{FeatureKind::River, "RIVER", "RIVERS"},
                                  KindWords{FeatureKind::Road, "ROAD", "ROADS"}};

bool IsNamed(FeatureKind kind) {
    return kind == FeatureKind::Airport || kind == FeatureKind::Label;
}

std::string Word(BinaryReader& reader) {
    const int32_t length = reader.Int32();
    reader.RequireRecords(length, 1, "letters");
    const auto bytes = reader.Bytes(static_cast<size_t>(length));
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::vector<FeaturePoint> PointsFrom(BinaryReader& reader) {
    const int32_t count = reader.Int32();
    reader.RequireRecords(count, sizeof(FeaturePoint), "points");
    std::vector<FeaturePoint> points(static_cast<size_t>(count));
    const auto bytes = reader.Bytes(points.size() * sizeof(FeaturePoint));
    if (!points.empty())
        std::memcpy(points.data(), bytes.data(), bytes.size());
    return points;
}

void AppendNumber(std::string& bytes, size_t number) {
    const auto given = static_cast<int32_t>(number);
    bytes.append(reinterpret_cast<const char*>(&given), sizeof given);
}

void AppendWord(std::string& bytes, const std::string& word) {
    AppendNumber(bytes, word.size());
    bytes += word;
}

FeaturePoint PostOf(const FeaturePoint& point, const TheaterPlace& place) {
    return {(point.X - place.Left) / place.PostWidth - 0.5,
            (point.Y - place.Bottom) / place.PostHeight - 0.5};
}

FeaturePoint PlacedPoint(const FeaturePoint& post, const TheaterPlace& place) {
    return {place.Left + (post.X + 0.5) * place.PostWidth,
            place.Bottom + (post.Y + 0.5) * place.PostHeight};
}

FeaturePoint MiddleOf(const std::vector<FeaturePoint>& points) {
    const auto [left, right] = std::ranges::minmax(points, {}, &FeaturePoint::X);
    const auto [bottom, top] = std::ranges::minmax(points, {}, &FeaturePoint::Y);
    return {(left.X + right.X) / 2, (bottom.Y + top.Y) / 2};
}

void AddFeature(FeatureList& list, std::vector<FeaturePoint> points, int32_t value,
                std::string text) {
    const auto count = static_cast<int32_t>(points.size());
    list.push_back({count, std::move(points), value, std::move(text)});
}

// The pieces share the points where they meet.
void AddLine(FeatureList& list, const std::vector<FeaturePoint>& points, int32_t value) {
    size_t from = 0;
    do {
        const size_t to = std::min(from + MostPoints, points.size());
        AddFeature(list,
                   {points.begin() + static_cast<ptrdiff_t>(from),
                    points.begin() + static_cast<ptrdiff_t>(to)},
                   value, {});
        from = to - 1;
    } while (from + 1 < points.size());
}

std::vector<FeaturePoint> Thinned(std::vector<FeaturePoint> points) {
    const size_t step = (points.size() + MostPoints - 2) / (MostPoints - 1);
    if (points.size() <= MostPoints)
        return points;
    std::vector<FeaturePoint> thinned;
    for (size_t i = 0; i + 1 < points.size(); i += step)
        thinned.push_back(points[i]);
    thinned.push_back(points.back());
    return thinned;
}

void AddShape(const WorldShape& shape, const TheaterPlace& place, FeatureKind kind,
              FeatureSet& features) {
    std::vector<FeaturePoint> points;
    for (const FeaturePoint& point : shape.Points)
        points.push_back(PostOf(point, place));
    // A feature whose last point is not its first one is closed in a map all the same.
    if (shape.Shape == WorldShape::Form::Area && shape.Told >= 0 &&
        points.size() == static_cast<size_t>(shape.Told) + 1)
        points.pop_back();
    const bool isArea =
        shape.Shape == WorldShape::Form::Area || shape.Shape == WorldShape::Form::Hole;
    FeatureList& list = features.Of(kind);
    if (IsNamed(kind)) {
        const bool isOurs = shape.Told == static_cast<int32_t>(points.size());
        if (!isOurs && shape.Shape != WorldShape::Form::Point)
            points = {MiddleOf(points)};
        AddFeature(list, std::move(points), shape.Value, BytesFromUtf8(shape.Name));
    } else if (kind == FeatureKind::City && isArea) {
        AddFeature(list, Thinned(std::move(points)), shape.Value, {});
    } else {
        AddLine(list, points, shape.Value);
    }
}

} // namespace

std::vector<WorldShape> ShapesFromBytes(std::span<const std::byte> bytes,
                                        const std::string& path) {
    BinaryReader reader(bytes, path);
    std::vector<WorldShape> shapes;
    while (reader.Remaining() > 0) {
        WorldShape& shape = shapes.emplace_back();
        shape.Shape = static_cast<WorldShape::Form>(reader.Byte() & 3);
        shape.Kind = Word(reader);
        shape.Name = Word(reader);
        shape.Value = reader.Int32();
        shape.Told = reader.Int32();
        shape.Points = PointsFrom(reader);
    }
    return shapes;
}

std::string BytesOfShapes(const std::vector<WorldShape>& shapes) {
    std::string bytes;
    for (const WorldShape& shape : shapes) {
        bytes += static_cast<char>(shape.Shape);
        AppendWord(bytes, shape.Kind);
        AppendWord(bytes, shape.Name);
        for (const int32_t number : {shape.Value, shape.Told})
            bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
        AppendNumber(bytes, shape.Points.size());
        bytes.append(reinterpret_cast<const char*>(shape.Points.data()),
                     shape.Points.size() * sizeof(FeaturePoint));
    }
    return bytes;
}

std::optional<FeatureKind> KindOfWord(std::string_view word) {
    const std::string upper = UpperCase(word);
    for (const auto& [kind, one, several] : WordsOfKinds)
        if (upper == one || upper == several)
            return kind;
    return std::nullopt;
}

void AddShapes(const std::vector<WorldShape>& shapes, const TheaterPlace& place,
               const KindsOfWords& kinds, FeatureSet& features,
               std::map<std::string, int64_t>& unknown) {
    for (const WorldShape& shape : shapes) {
        const auto told = kinds.find(shape.Kind);
        const auto kind = told != kinds.end() ? told->second : KindOfWord(shape.Kind);
        if (told == kinds.end() && !kind)
            ++unknown[shape.Kind];
        const bool isHole = shape.Shape == WorldShape::Form::Hole;
        if (!kind || shape.Points.empty() ||
            (isHole && (IsNamed(*kind) || *kind == FeatureKind::City)))
            continue;
        AddShape(shape, place, *kind, features);
    }
}

std::optional<WorldShape> ShapeOf(const Feature& feature, FeatureKind kind,
                                  const TheaterPlace& place) {
    if (feature.PointCount <= 0)
        return std::nullopt;
    WorldShape shape;
    shape.Kind = WordsOfKinds[static_cast<size_t>(kind) - 1].One;
    shape.Name = Utf8FromBytes(feature.Text);
    shape.Value = feature.Value;
    shape.Told = feature.PointCount;
    for (const FeaturePoint& point : feature.Points)
        shape.Points.push_back(PlacedPoint(point, place));
    // Those that the feature's line does not have.
    shape.Points.resize(static_cast<size_t>(feature.PointCount),
                        PlacedPoint({0, 0}, place));
    if (shape.Points.size() == 1)
        shape.Shape = WorldShape::Form::Point;
    else if (kind == FeatureKind::City && shape.Points.size() > 2)
        shape.Shape = WorldShape::Form::Area;
    else
        shape.Shape = WorldShape::Form::Line;
    return shape;
}

} // namespace vardenix
