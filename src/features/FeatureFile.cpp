#include "features/FeatureFile.h"

#include "files/BinaryReader.h"
#include "files/Mending.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "texts/TextLines.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace vardenix {

namespace {

// MostFeatures with room for many points each.
constexpr uint64_t LongestFeatureFile = uint64_t{512} << 20;

// The next piece between blanks and tabs; empty when there is none.
std::string_view NextPiece(std::string_view& rest) {
    const size_t begin = std::min(rest.find_first_not_of(" \t"), rest.size());
    const size_t end = std::min(rest.find_first_of(" \t", begin), rest.size());
    const std::string_view piece = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return piece;
}

std::optional<FeatureKind> KindOf(std::string_view word) {
    const std::string upper = UpperCase(word.substr(0, 10));
    for (const FeatureKind kind : FeatureKinds)
        if (upper == KeywordOf(kind))
            return kind;
    return std::nullopt;
}

// The number at the beginning of a piece, rounded; nothing when it fits no `Field`.
template <typename Field>
std::optional<Field> WholeNumber(std::string_view piece) {
    const double value = RoundHalfEven(Val(piece));
    if (!(value >= std::numeric_limits<Field>::min() &&
          value <= std::numeric_limits<Field>::max()))
        return std::nullopt;
    return static_cast<Field>(value);
}

size_t DigitsAt(std::string_view text, size_t from) {
    const size_t end = text.find_first_not_of("0123456789", from);
    return std::min(end, text.size()) - from;
}

// Whether all of a text is one number: a sign, digits with a point among them, an
// exponent.
bool IsNumber(std::string_view text) {
    size_t at = text.find_first_not_of("+-") == 1 ? 1 : 0;
    const size_t whole = DigitsAt(text, at);
    at += whole;
    size_t fraction = 0;
    if (at < text.size() && text[at] == '.') {
        fraction = DigitsAt(text, at + 1);
        at += 1 + fraction;
    }
    if (whole + fraction == 0)
        return false;
    if (at == text.size())
        return true;
    if (std::string_view("eEdD").find(text[at]) == std::string_view::npos)
        return false;
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        ++at;
    return DigitsAt(text, at) > 0 && at + DigitsAt(text, at) == text.size();
}

std::optional<double> Coordinate(std::string_view text) {
    if (!IsNumber(text))
        return std::nullopt;
    const double value = Val(text);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// False when the line ends or goes wrong before all points are there.
bool ParsePoints(std::string_view& rest, Feature& feature) {
    // No point is shorter than "0,0 ", whatever the line says of their number.
    feature.Points.reserve(
        std::min(static_cast<size_t>(feature.PointCount), rest.size() / 4 + 1));
    for (int32_t k = 1; k <= feature.PointCount; ++k) {
        const auto point = ParsePoint(NextPiece(rest));
        if (!point)
            return false;
        feature.Points.push_back(*point);
    }
    return true;
}

std::string NameOf(std::string_view rest) {
    std::string name;
    for (auto piece = NextPiece(rest); !piece.empty(); piece = NextPiece(rest))
        name.append(name.empty() ? "" : " ").append(piece);
    return name;
}

void Append(FeatureSet& to, FeatureSet& from) {
    // Memory first: nothing can fail between two lists.
    for (const FeatureKind kind : FeatureKinds)
        to.Of(kind).reserve(to.Of(kind).size() + from.Of(kind).size() - 1);
    for (const FeatureKind kind : FeatureKinds)
        std::move(from.Of(kind).begin() + 1, from.Of(kind).end(),
                  std::back_inserter(to.Of(kind)));
}

} // namespace

std::string_view KeywordOf(FeatureKind kind) {
    constexpr std::array<std::string_view, FeatureKinds.size()> words{
        "AIRPORT", "CITY", "COAST", "LABEL", "RIVER", "ROAD"};
    return words[static_cast<size_t>(kind) - 1];
}

std::optional<FeaturePoint> ParsePoint(std::string_view token) {
    const size_t comma = token.find(',');
    if (comma == std::string_view::npos)
        return std::nullopt;
    const std::string_view behind = token.substr(comma + 1);
    const auto x = Coordinate(token.substr(0, comma));
    const auto y = Coordinate(behind.substr(0, behind.find(',')));
    if (!x || !y)
        return std::nullopt;
    return FeaturePoint{*x, *y};
}

void ParseFeatureLine(std::string_view line, FeatureSet& features) {
    std::string_view rest = line;
    const auto kind = KindOf(NextPiece(rest));
    const std::string_view countPiece = NextPiece(rest);
    if (!kind || countPiece.empty())
        return;
    const auto count = WholeNumber<int16_t>(countPiece);
    if (!count)
        return;

    Feature& feature = features.Of(*kind).emplace_back();
    feature.PointCount = *count;
    // A list of points cannot end below its beginning.
    if (feature.PointCount < 0 || !ParsePoints(rest, feature))
        return;
    const std::string_view valuePiece = NextPiece(rest);
    const auto value = WholeNumber<int32_t>(valuePiece);
    if (valuePiece.empty() || !value)
        return;
    feature.Value = *value;
    if (*kind == FeatureKind::Airport || *kind == FeatureKind::Label)
        feature.Text = NameOf(rest);
}

void LoadFeatureFile(const std::string& path, FeatureSet& features) {
    // An export that a kill has cut short is finished or dropped first.
    const ReadingLock lock({path});
    const FileBytes file = ReadWholeFile(path, LongestFeatureFile);
    std::string_view rest(reinterpret_cast<const char*>(file.data()), file.size());
    FeatureSet loaded;
    const size_t before = features.Count();
    std::string_view line;
    size_t lines = 0;
    while (NextLine(rest, line)) {
        ParseFeatureLine(line, loaded);
        // Counted now and then only: no line has more than one.
        if (++lines % 10000 == 0 && before + loaded.Count() > MostFeatures)
            break;
    }
    if (before + loaded.Count() > MostFeatures)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           path + ": more than " + std::to_string(MostFeatures) +
                               " features at line " + std::to_string(lines));
    Append(features, loaded);
}

std::string FeatureToLine(const Feature& feature, FeatureKind kind) {
    std::string line(KeywordOf(kind));
    line += " " + std::to_string(feature.PointCount) + " ";
    for (const FeaturePoint& point : feature.Points)
        line += Format0(point.X) + "," + Format0(point.Y) + " ";
    for (auto k = static_cast<int64_t>(feature.Points.size()); k < feature.PointCount;
         ++k)
        line += "0,0 ";
    line += std::to_string(feature.Value);
    if (!feature.Text.empty())
        line += " " + feature.Text;
    return line;
}

void ClearFeatures(FeatureSet& features) { features = {}; }

} // namespace vardenix
