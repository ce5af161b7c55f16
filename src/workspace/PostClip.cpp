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

// Adds a post that changes; serials rise.
void AddChanged(PostDelta& delta, int32_t serial, const TerrainPost& old,
                const TerrainPost& changed) {
    if (old == changed)
        return;
    auto& stretches = delta.Values.Stretches;
    if (!stretches.empty() && stretches.back().Serial + stretches.back().Count == serial)
        ++stretches.back().Count;
    else
        stretches.push_back({serial, 1});
    delta.Values.Old.push_back(old);
    delta.Values.New.push_back(changed);
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
    clip.Posts.resize(count);
    clip.Selected.resize(count);
    for (const RowSpan& span : selection.Spans()) {
        const size_t from =
            static_cast<size_t>(span.Y) * static_cast<size_t>(terrain.MapWidth) +
            static_cast<size_t>(span.X1);
        const size_t to = ClipIndex(clip, span.X1 - box.X1, span.Y - box.Y1);
        const size_t length = static_cast<size_t>(span.X2 - span.X1) + 1;
        std::ranges::copy(posts.subspan(from, length),
                          clip.Posts.begin() + static_cast<ptrdiff_t>(to));
        std::fill_n(clip.Selected.begin() + static_cast<ptrdiff_t>(to), length,
                    uint8_t{1});
    }
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
    PostDelta delta;
    const auto posts = terrain.LxArr.Values();
    const int32_t width = terrain.MapWidth;
    for (int32_t row = 0; row < clip.Height; ++row) {
        const int64_t y = int64_t{lowerLeft.Y} + row;
        for (int32_t column = 0; column < clip.Width; ++column) {
            const int64_t x = int64_t{lowerLeft.X} + column;
            const size_t at = ClipIndex(clip, column, row);
            if (clip.Selected[at] == 0 || x < 0 || y < 0 || x >= width || y >= width)
                continue;
            const PostPlace place{static_cast<int32_t>(x), static_cast<int32_t>(y)};
            if (bounds != nullptr && !bounds->Has(place))
                continue;
            const int32_t serial = place.Y * width + place.X + 1;
            const TerrainPost& old = posts[static_cast<size_t>(serial) - 1];
            TerrainPost changed = old;
            TakeFields(changed, clip.Posts[at], fields);
            AddChanged(delta, serial, old, changed);
        }
    }
    return delta;
}

PostDelta CutPosts(const Terrain& terrain, const Selection& selection,
                   const ClipFields& fields) {
    PostDelta delta;
    for (const RowSpan& span : selection.Spans())
        for (int32_t x = span.X1; x <= span.X2; ++x) {
            const int32_t serial = span.Y * terrain.MapWidth + x + 1;
            const TerrainPost old = terrain.LxArr(serial);
            TerrainPost changed = old;
            TakeFields(changed, TerrainPost{}, fields);
            AddChanged(delta, serial, old, changed);
        }
    return delta;
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
