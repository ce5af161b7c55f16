#include "builder/FartileMaking.h"

#include "builder/FartileDrawing.h"
#include "platform/ForEachInParallel.h"
#include "platform/RuntimeError.h"
#include "services/ImageLayer.h"
#include "theater/TerrainStore.h"

#include <algorithm>
#include <set>
#include <vector>

namespace vardenix {

namespace {

constexpr int32_t BatchSize = 2000;
// How often the counter moves, in far tiles.
constexpr int32_t ShownEvery = 100;
// Bytes of far tiles that are drawn before they are written.
constexpr size_t DrawnAtOnce = size_t{8} << 20;

constexpr const char* Making = "Making the fartiles, please be patient...";
constexpr const char* Compressing = "Compressing DDS images, please be patient...";

// Indices of far tiles, the last one not among them.
struct Range {
    int32_t First = 0;
    int32_t Last = 0;
};

// The two containers while they are written.
class Containers {
public:
    Containers(const FartileParts& parts, const FartileShape& shape)
        : day_(parts.Files, DayContainer(parts.TextureFolder)),
          night_(parts.Files, NightContainer(parts.TextureFolder)) {
        const auto header = shape.Header();
        day_.Write(std::as_bytes(std::span(header)));
        night_.Write(std::as_bytes(std::span(header)));
    }
    void Add(std::span<const uint8_t> day, std::span<const uint8_t> night) {
        day_.Write(std::as_bytes(day));
        night_.Write(std::as_bytes(night));
    }
    void Finish() {
        day_.Finish();
        night_.Finish();
    }

private:
    RewrittenFile day_;
    RewrittenFile night_;
};

class Maker {
public:
    Maker(const FartileParts& parts, const FartileList& list)
        : parts_(parts), list_(list), count_(list.UpperBound()), shape_(parts.FarSize),
          tiles_(parts.Catalogue, shape_), drawing_(parts.Terrain, shape_, tiles_),
          containers_(parts, shape_) {}

    void MakeAll() {
        int64_t start = parts_.View.Seconds();
        for (int32_t first = 0; first < count_; first += BatchSize) {
            if (first > 0)
                ShowTimeLeft(first, start);
            MakeBatch({first, std::min(first + BatchSize, count_)});
        }
        containers_.Finish();
    }

private:
    // What the last batch took says how long the rest will take.
    void ShowTimeLeft(int32_t done, int64_t& start) {
        const int64_t now = parts_.View.Seconds();
        const int64_t left = int64_t{count_ - done} * (now - start) / BatchSize;
        start = now;
        parts_.View.SetLblTime(TimeRemainingText(left));
        parts_.View.GoOn();
    }

    // As many at a time as there is memory for their tiles, which is nearly always all.
    void MakeBatch(const Range& batch) {
        for (int32_t first = batch.First; first < batch.Last;) {
            std::set<int32_t> tiles;
            int32_t last = first;
            while (last < batch.Last && AddTilesOf(last, tiles))
                ++last;
            DrawTiles({first, last}, tiles);
            first = last;
        }
    }

    // False, and nothing added, when there is no room for the tiles of one more.
    bool AddTilesOf(int32_t index, std::set<int32_t>& tiles) const {
        const auto posts = parts_.Terrain.LxArr.Values();
        std::set<int32_t> more;
        for (const int32_t serial : list_.At(index).Serials) {
            const int32_t tile = posts[static_cast<size_t>(serial) - 1].TileOffset;
            RequireInCatalogue(tile, serial);
            if (!tiles.contains(tile))
                more.insert(tile);
        }
        if (!tiles.empty() && tiles.size() + more.size() > tiles_.TilesAtOnce())
            return false;
        tiles.merge(more);
        return true;
    }

    void RequireInCatalogue(int32_t tile, int32_t serial) const {
        if (tile >= 0 && static_cast<size_t>(tile) < parts_.Catalogue.Lookup.size())
            return;
        const PostXY post = SerialToXY(serial, parts_.Terrain.MapWidth);
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "the post at X " + std::to_string(static_cast<int>(post.X)) +
                               ", Y " + std::to_string(static_cast<int>(post.Y)) +
                               " has tile number " + std::to_string(tile) +
                               ", which the catalogue does not have");
    }

    void DrawTiles(const Range& range, const std::set<int32_t>& wanted) {
        tiles_.MakeRoomFor(wanted);
        for (int32_t first = range.First; first < range.Last;) {
            const int32_t next = (first / ShownEvery + 1) * ShownEvery;
            const int32_t last = std::min(next, range.Last);
            if (first % ShownEvery == 0)
                ShowIndex(first);
            RequireTiles({first, last});
            first = last;
        }
        parts_.View.SetStatus(Compressing);
        parts_.View.GoOn();
        WriteTiles(range);
        parts_.View.SetStatus(Making);
        parts_.View.GoOn();
    }

    void ShowIndex(int32_t index) {
        parts_.View.SetPB1_val(index);
        parts_.View.SetLabel2("FT: " + std::to_string(count_ - 1 - index));
        parts_.View.GoOn();
    }

    void RequireTiles(const Range& range) {
        const auto posts = parts_.Terrain.LxArr.Values();
        std::set<int32_t> tiles;
        for (int32_t index = range.First; index < range.Last; ++index)
            for (const int32_t serial : list_.At(index).Serials) {
                const int32_t number = posts[static_cast<size_t>(serial) - 1].TileOffset;
                tiles.insert(number); // a field of a packed record has no address
            }
        if (!tiles_.Require(tiles, Stop(), parts_.Threads))
            throw RebuildStopped();
    }

    void WriteTiles(const Range& range) {
        const int32_t atOnce = static_cast<int32_t>(
            std::max<size_t>(1, DrawnAtOnce / (2 * shape_.LinearSize())));
        for (int32_t first = range.First; first < range.Last; first += atOnce) {
            const auto count = static_cast<size_t>(std::min(range.Last - first, atOnce));
            std::vector<std::vector<uint8_t>> drawn(2 * count);
            const bool whole = ForEachInParallel(
                count,
                [&](size_t i) {
                    const auto record = list_.At(first + static_cast<int32_t>(i));
                    drawn[2 * i] = drawing_.Draw(record, DayOrNight::Day);
                    drawn[2 * i + 1] = drawing_.Draw(record, DayOrNight::Night);
                },
                Stop(), parts_.Threads);
            if (!whole)
                throw RebuildStopped();
            for (size_t i = 0; i < count; ++i)
                containers_.Add(drawn[2 * i], drawn[2 * i + 1]);
            parts_.View.ShowFartile(drawn[2 * count - 2], drawn[2 * count - 1],
                                    shape_.FarSize());
        }
    }

    std::function<bool()> Stop() {
        return [this] {
            parts_.View.LetEventsThrough();
            return parts_.View.StopWanted();
        };
    }

    const FartileParts& parts_;
    const FartileList& list_;
    int32_t count_;
    FartileShape shape_;
    SmallTiles tiles_;
    FartileDrawing drawing_;
    Containers containers_;
};

} // namespace

void MakeFartiles(const FartileParts& parts, const FartileList& list) {
    parts.View.SetLblTime("");
    parts.View.SetPB1_Max(list.UpperBound() - 1);
    parts.View.SetPB1_val(0);
    // The library is opened before the threads begin and closed after they have ended.
    const ImageSession session;
    Maker(parts, list).MakeAll();
}

std::string TimeRemainingText(int64_t seconds) {
    const int64_t hours = seconds / 3600;
    const int64_t minutes = (seconds - hours * 3600) / 60;
    std::string text = "About ";
    if (hours >= 1)
        text += std::to_string(hours) + (hours == 1 ? "hour " : "hours ");
    const std::string digits = std::to_string(minutes);
    return text + (digits.size() < 2 ? "0" : "") + digits + "mins remaining.";
}

} // namespace vardenix
