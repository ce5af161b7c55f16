#include "workspace/PostClip.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace vardenix {

namespace {

constexpr std::array<char, 8> Mark{'V', 'X', 'P', 'o', 's', 't', 's', '1'};
constexpr size_t ClipHeader = Mark.size() + 2 * sizeof(int32_t);

size_t ClipIndex(const PostClip& clip, int32_t x, int32_t y) {
    return static_cast<size_t>(y) * static_cast<size_t>(clip.Width) +
           static_cast<size_t>(x);
}

// A clip of another shape; from(x, y) gives where a post of it comes from.
template <typename From>
PostClip Rearranged(const PostClip& clip, int32_t width, int32_t height, From from) {
    PostClip result{width, height, {}, {}};
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x) {
            const auto [oldX, oldY] = from(x, y);
            result.Posts.push_back(clip.Posts[ClipIndex(clip, oldX, oldY)]);
            result.Selected.push_back(clip.Selected[ClipIndex(clip, oldX, oldY)]);
        }
    return result;
}

void TakeFields(TerrainPost& post, const TerrainPost& from, const ClipFields& fields) {
    if (fields.Tile)
        post.TileOffset = from.TileOffset;
    if (fields.Elevation)
        post.Elevation = from.Elevation;
    if (fields.Palette)
        post.Palette = from.Palette;
    if (fields.X1)
        post.X1 = from.X1;
    if (fields.X2)
        post.X2 = from.X2;
}

// Where the selected posts of a clip come to lie, as far as the terrain and the bounds
// have room for them.
std::vector<RowSpan> PlacesOf(const PostClip& clip, PostPlace lowerLeft, int32_t width,
                              const Selection* bounds) {
    std::vector<RowSpan> spans;
    for (int32_t row = 0; row < clip.Height; ++row) {
        const int64_t y = int64_t{lowerLeft.Y} + row;
        if (y < 0 || y >= width)
            continue;
        const auto* const marks = &clip.Selected[ClipIndex(clip, 0, row)];
        const auto* const end = marks + clip.Width;
        for (const uint8_t* at = std::find(marks, end, 1); at != end;) {
            const uint8_t* const last = std::find(at, end, 0);
            const int64_t x1 = std::max<int64_t>(lowerLeft.X + (at - marks), 0);
            const int64_t x2 = std::min<int64_t>(lowerLeft.X + (last - marks), width) - 1;
            if (x1 <= x2)
                spans.push_back({static_cast<int32_t>(y), static_cast<int32_t>(x1),
                                 static_cast<int32_t>(x2)});
            at = std::find(last, end, 1);
        }
    }
    return bounds == nullptr ? spans
                             : Common(Selection(std::move(spans)), *bounds).Spans();
}

// The stretches of a row that differ.
void AddDifferences(DeltaWriter& writer, int32_t serial, std::span<const TerrainPost> old,
                    std::span<const TerrainPost> changed) {
    const size_t count = old.size();
    const auto same = [&](size_t i) { return old[i] == changed[i]; };
    for (size_t at = 0; at < count;) {
        if (same(at)) {
            ++at;
            continue;
        }
        size_t end = at + 1;
        while (end < count && !same(end))
            ++end;
        writer.AddStretch(serial + static_cast<int32_t>(at), old.subspan(at, end - at),
                          changed.subspan(at, end - at));
        at = end;
    }
}

[[noreturn]] void RefuseClip(const std::string& reason) {
    throw RuntimeError(ErrorNumber::InputPastEnd, "the clipboard's posts: " + reason);
}

int32_t NumberAt(std::span<const std::byte> bytes, size_t offset) {
    int32_t number = 0;
    std::memcpy(&number, &bytes[offset], sizeof number);
    return number;
}

} // namespace

PostClip ClipOf(const Terrain& terrain, const Selection& selection) {
    if (selection.Empty())
        return {};
    const PostBox box = selection.Bounds();
    PostClip clip{box.X2 - box.X1 + 1, box.Y2 - box.Y1 + 1, {}, {}};
    const auto posts = terrain.LxArr.Values();
    const auto count = static_cast<size_t>(clip.Width) * static_cast<size_t>(clip.Height);
    clip.Posts.reserve(count);
    clip.Selected.reserve(count);
    for (const RowSpan& span : selection.Spans()) {
        const size_t from =
            static_cast<size_t>(span.Y) * static_cast<size_t>(terrain.MapWidth) +
            static_cast<size_t>(span.X1);
        const auto row = posts.subspan(from, static_cast<size_t>(span.X2 - span.X1) + 1);
        // What lies between two spans is not selected.
        const size_t to = ClipIndex(clip, span.X1 - box.X1, span.Y - box.Y1);
        clip.Posts.resize(to);
        clip.Selected.resize(to);
        clip.Posts.insert(clip.Posts.end(), row.begin(), row.end());
        clip.Selected.resize(to + row.size(), 1);
    }
    clip.Posts.resize(count);
    clip.Selected.resize(count);
    return clip;
}

PostClip Mirrored(const PostClip& clip) {
    return Rearranged(clip, clip.Width, clip.Height, [&](int32_t x, int32_t y) {
        return std::pair{clip.Width - 1 - x, y};
    });
}

PostClip Turned(const PostClip& clip) {
    // What was at the right comes to the top.
    return Rearranged(clip, clip.Height, clip.Width, [&](int32_t x, int32_t y) {
        return std::pair{y, clip.Height - 1 - x};
    });
}

PostDelta StampedPosts(const Terrain& terrain, const PostClip& clip, PostPlace lowerLeft,
                       const ClipFields& fields, const Selection* bounds) {
    DeltaWriter writer;
    writer.Reserve(clip.Posts.size());
    const auto posts = terrain.LxArr.Values();
    const int32_t width = terrain.MapWidth;
    std::vector<TerrainPost> changed;
    for (const RowSpan& span : PlacesOf(clip, lowerLeft, width, bounds)) {
        const int32_t serial = span.Y * width + span.X1 + 1;
        const size_t count = static_cast<size_t>(span.X2 - span.X1) + 1;
        const auto old = posts.subspan(static_cast<size_t>(serial) - 1, count);
        const auto from =
            std::span(clip.Posts)
                .subspan(ClipIndex(clip, span.X1 - lowerLeft.X, span.Y - lowerLeft.Y),
                         count);
        if (fields == ClipFields{}) {
            AddDifferences(writer, serial, old, from);
            continue;
        }
        changed.assign(old.begin(), old.end());
        for (size_t i = 0; i < count; ++i)
            TakeFields(changed[i], from[i], fields);
        AddDifferences(writer, serial, old, changed);
    }
    return writer.Take();
}

PostDelta CutPosts(const Terrain& terrain, const Selection& selection,
                   const ClipFields& fields) {
    DeltaWriter writer;
    for (const RowSpan& span : selection.Spans())
        for (int32_t x = span.X1; x <= span.X2; ++x) {
            const int32_t serial = span.Y * terrain.MapWidth + x + 1;
            const TerrainPost old = terrain.LxArr(serial);
            TerrainPost changed = old;
            TakeFields(changed, TerrainPost{}, fields);
            writer.Add(serial, old, changed);
        }
    return writer.Take();
}

std::vector<std::byte> BytesOf(const PostClip& clip) {
    std::vector<std::byte> bytes(ClipHeader + clip.Posts.size() * sizeof(TerrainPost) +
                                 clip.Selected.size());
    std::memcpy(bytes.data(), Mark.data(), Mark.size());
    std::memcpy(&bytes[Mark.size()], &clip.Width, sizeof clip.Width);
    std::memcpy(&bytes[Mark.size() + sizeof clip.Width], &clip.Height,
                sizeof clip.Height);
    if (clip.Posts.empty())
        return bytes;
    const size_t size = clip.Posts.size() * sizeof(TerrainPost);
    std::memcpy(&bytes[ClipHeader], clip.Posts.data(), size);
    std::memcpy(&bytes[ClipHeader + size], clip.Selected.data(), clip.Selected.size());
    return bytes;
}

PostClip ParseClip(std::span<const std::byte> bytes) {
    if (bytes.size() < ClipHeader ||
        std::memcmp(bytes.data(), Mark.data(), Mark.size()) != 0)
        RefuseClip("they do not begin as such");
    PostClip clip;
    clip.Width = NumberAt(bytes, Mark.size());
    clip.Height = NumberAt(bytes, Mark.size() + sizeof clip.Width);
    const auto isSide = [](int32_t side) { return side >= 1 && side <= MaxGridWidth; };
    if (!isSide(clip.Width) || !isSide(clip.Height))
        RefuseClip("no rectangle of posts is " + std::to_string(clip.Width) + " by " +
                   std::to_string(clip.Height));
    const size_t count =
        static_cast<size_t>(clip.Width) * static_cast<size_t>(clip.Height);
    if (bytes.size() != ClipHeader + count * (sizeof(TerrainPost) + 1))
        RefuseClip("expected " +
                   std::to_string(ClipHeader + count * (sizeof(TerrainPost) + 1)) +
                   " bytes, found " + std::to_string(bytes.size()));
    clip.Posts.resize(count);
    clip.Selected.resize(count);
    std::memcpy(clip.Posts.data(), &bytes[ClipHeader], count * sizeof(TerrainPost));
    std::memcpy(clip.Selected.data(), &bytes[ClipHeader + count * sizeof(TerrainPost)],
                count);
    for (size_t i = 0; i < count; ++i)
        if (clip.Selected[i] > 1)
            RefuseClip("a mark is neither 0 nor 1");
        else if (clip.Posts[i].TileOffset < 0)
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                               "the clipboard's posts: a tile number is negative");
    return clip;
}

} // namespace vardenix
