#include "builder/FartileMaking.h"

#include "builder/FartileContainers.h"
#include "builder/FartileDrawing.h"
#include "builder/FartileKeys.h"
#include "builder/MetTiles.h"
#include "builder/OldFartiles.h"
#include "files/StagedFile.h"
#include "levels/TerrainStore.h"
#include "pictures/ImageLayer.h"
#include "platform/ForEachInParallel.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace vardenix {

namespace {

constexpr int32_t BatchSize = 2000;
// Keys that a thread works out before it asks for more.
constexpr size_t KeysAtOnce = 250;
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

class Maker {
public:
    Maker(const FartileParts& parts, const FartileList& list)
        : parts_(parts), list_(list), count_(list.UpperBound()), shape_(parts.FarSize),
          old_(parts.Files.How == Rewriting::OnlyChanged
                   ? OldFartiles::Trusted(parts.TextureFolder, shape_)
                   : nullptr),
          files_(parts.Catalogue, old_ ? old_->Pictures() : std::vector<KnownPicture>()),
          tiles_(files_, shape_), drawing_(parts.Terrain, shape_, tiles_), keys_(shape_),
          pictures_(files_, tiles_),
          containers_(parts.Files, parts.TextureFolder, shape_, old_.get()) {}

    void MakeAll() {
        int64_t start = parts_.View.Seconds();
        for (int32_t first = 0; first < count_; first += BatchSize) {
            if (first > 0)
                ShowTimeLeft(first, start);
            MakeBatch({first, std::min(first + BatchSize, count_)});
        }
        containers_.Finish(files_.Known());
        parts_.Files.Fartiles = {count_ - copied_, copied_, files_.FilesRead()};
    }

private:
    struct Copy {
        int32_t From = OldFartiles::None; // index in the old containers
        Digest Key{};
    };

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
        for (int32_t index = batch.First; index < batch.Last; ++index)
            for (const int32_t serial : list_.At(index).Serials)
                RequireInCatalogue(TileOf(serial), serial);
        LookForCopies(batch);
        for (int32_t first = batch.First; first < batch.Last;) {
            MetTiles tiles(files_.Count());
            int32_t last = first;
            while (last < batch.Last && AddTilesOf(last, tiles))
                ++last;
            DrawTiles({first, last}, tiles.All());
            first = last;
        }
    }

    // Which far tiles of the old containers are those of the batch.
    void LookForCopies(const Range& batch) {
        if (!old_)
            return;
        MetTiles tiles(files_.Count());
        for (int32_t index = batch.First; index < batch.Last; ++index)
            AddTilesUnder(index, tiles);
        if (!pictures_.Require(tiles.All(), Stop(), parts_.Threads))
            throw RebuildStopped();
        const std::vector<Digest> keys = KeysOf(batch);
        copies_.assign(keys.size(), {});
        firstOfCopies_ = batch.First;
        for (size_t i = 0; i < keys.size(); ++i) {
            const int32_t from = old_->Find(keys[i], lastCopied_ + 1);
            // One that is made takes the place of one that was.
            lastCopied_ = from != OldFartiles::None ? from : lastCopied_ + 1;
            if (from == OldFartiles::None)
                continue;
            copies_[i] = {from, keys[i]};
            ++copied_;
        }
    }

    // By what the pictures under them are known to be.
    std::vector<Digest> KeysOf(const Range& batch) const {
        const auto count = static_cast<size_t>(batch.Last - batch.First);
        std::vector<Digest> keys(count);
        ForEachInParallel((count + KeysAtOnce - 1) / KeysAtOnce,
                          [&](size_t part) {
                              const size_t last =
                                  std::min(count, (part + 1) * KeysAtOnce);
                              for (size_t i = part * KeysAtOnce; i < last; ++i)
                                  keys[i] =
                                      KeyOf(batch.First + static_cast<int32_t>(i),
                                            [&](int32_t tile) -> const TileDigests& {
                                                return pictures_.Of(tile);
                                            });
                          },
                          {}, parts_.Threads);
        return keys;
    }

    // Null for one that is made.
    const Copy* CopyFor(int32_t index) const {
        if (!old_)
            return nullptr;
        const Copy& copy = copies_[static_cast<size_t>(index - firstOfCopies_)];
        return copy.From == OldFartiles::None ? nullptr : &copy;
    }

    // False, and nothing added, when there is no room for the tiles of one more.
    bool AddTilesOf(int32_t index, MetTiles& tiles) const {
        if (CopyFor(index) != nullptr)
            return true;
        const size_t before = tiles.All().size();
        AddTilesUnder(index, tiles);
        if (before == 0 || tiles.All().size() <= tiles_.TilesAtOnce())
            return true;
        tiles.CutTo(before);
        return false;
    }

    int32_t TileOf(int32_t serial) const {
        return parts_.Terrain.LxArr.Values()[static_cast<size_t>(serial) - 1].TileOffset;
    }

    void AddTilesUnder(int32_t index, MetTiles& tiles) const {
        for (const int32_t serial : list_.At(index).Serials)
            tiles.Add(TileOf(serial));
    }

    // `digestsOf` a tile number.
    template <typename DigestsOf>
    Digest KeyOf(int32_t index, DigestsOf digestsOf) const {
        const FartileRecord record = list_.At(index);
        std::vector<TileDigests> pictures;
        pictures.reserve(record.Serials.size());
        for (const int32_t serial : record.Serials)
            pictures.push_back(digestsOf(TileOf(serial)));
        return keys_.KeyOf(record.Level, pictures);
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

    void DrawTiles(const Range& range, const std::vector<int32_t>& wanted) {
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
        MetTiles tiles(files_.Count());
        for (int32_t index = range.First; index < range.Last; ++index)
            if (CopyFor(index) == nullptr)
                AddTilesUnder(index, tiles);
        if (!tiles.All().empty() && !tiles_.Require(tiles.All(), Stop(), parts_.Threads))
            throw RebuildStopped();
    }

    // The key is that of the pictures that were decoded: they may be others by now than
    // when it was looked for copies.
    DrawnFartile Draw(int32_t index) {
        const FartileRecord record = list_.At(index);
        DrawnFartile drawn;
        for (const DayOrNight when : {DayOrNight::Day, DayOrNight::Night}) {
            auto& bytes = drawn.Bytes[static_cast<size_t>(when)];
            bytes = drawing_.Draw(record, when);
            drawn.Sums[static_cast<size_t>(when)] =
                ChecksumOf(std::as_bytes(std::span(bytes)));
        }
        drawn.Key = KeyOf(index, [&](int32_t tile) -> const TileDigests& {
            return tiles_.Of(tile).Digests;
        });
        return drawn;
    }

    void WriteTiles(const Range& range) {
        const int32_t atOnce = static_cast<int32_t>(
            std::max<size_t>(1, DrawnAtOnce / (2 * shape_.LinearSize())));
        for (int32_t first = range.First; first < range.Last; first += atOnce) {
            const int32_t count = std::min(range.Last - first, atOnce);
            std::vector<int32_t> made;
            for (int32_t index = first; index < first + count; ++index)
                if (CopyFor(index) == nullptr)
                    made.push_back(index);
            std::vector<DrawnFartile> drawn(made.size());
            const bool whole = ForEachInParallel(
                made.size(), [&](size_t i) { drawn[i] = Draw(made[i]); }, Stop(),
                parts_.Threads);
            if (!whole)
                throw RebuildStopped();
            auto next = drawn.begin();
            for (int32_t index = first; index < first + count; ++index) {
                if (const Copy* copy = CopyFor(index))
                    containers_.Copy(copy->From, copy->Key);
                else
                    containers_.Add(*next++);
            }
            if (!drawn.empty())
                parts_.View.ShowFartile(drawn.back().Bytes[0], drawn.back().Bytes[1],
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
    std::unique_ptr<const OldFartiles> old_; // where far tiles may be copied
    TileFiles files_;
    SmallTiles tiles_;
    FartileDrawing drawing_;
    FartileKeys keys_;
    PictureDigests pictures_;
    FartileContainers containers_;
    std::vector<Copy> copies_; // of this batch, from its first on
    int32_t firstOfCopies_ = 0;
    int32_t lastCopied_ = -1; // in the old containers
    int32_t copied_ = 0;
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
