#include "catalogue/TextureBinFile.h"

#include "catalogue/PictureFolder.h"
#include "catalogue/PictureNames.h"
#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/Mending.h"
#include "files/Transaction.h"
#include "platform/SeveralNotices.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <bit>
#include <optional>

namespace vardenix {

namespace {

// The least bytes of each record in the file.
constexpr size_t SetBytes = 5;
constexpr size_t TileBytes = TileNameLength + 8;
constexpr size_t AreaBytes = 16;
constexpr size_t PathBytes = 24;

size_t Count(int32_t value) { return static_cast<size_t>(value); }

std::string ReadName(BinaryReader& reader) {
    const auto bytes = reader.Bytes(TileNameLength);
    std::string name;
    name.reserve(TileNameLength);
    for (const std::byte byte : bytes)
        name += byte == std::byte{0} ? ' ' : static_cast<char>(byte);
    return name;
}

TileArea ReadArea(BinaryReader& reader) {
    TileArea area;
    area.Type = reader.Int32();
    area.Radius = reader.Float();
    area.CenterX = reader.Float();
    area.CenterY = reader.Float();
    return area;
}

TilePath ReadPath(BinaryReader& reader) {
    TilePath path;
    path.Type = reader.Int32();
    path.Width = reader.Float();
    path.StartX = reader.Float();
    path.StartY = reader.Float();
    path.EndX = reader.Float();
    path.EndY = reader.Float();
    return path;
}

TileRecord ReadTile(BinaryReader& reader) {
    TileRecord tile;
    tile.TileName = ReadName(reader);
    tile.NumAreas = reader.Int32();
    tile.NumPaths = reader.Int32();
    reader.RequireRecords(tile.NumAreas, AreaBytes, "areas");
    tile.Areas.reserve(Count(tile.NumAreas) + 1);
    for (int32_t i = 1; i <= tile.NumAreas; ++i)
        tile.Areas.push_back(ReadArea(reader));
    reader.RequireRecords(tile.NumPaths, PathBytes, "paths");
    tile.Paths.reserve(Count(tile.NumPaths) + 1);
    for (int32_t i = 1; i <= tile.NumPaths; ++i)
        tile.Paths.push_back(ReadPath(reader));
    return tile;
}

TileSet ReadSet(BinaryReader& reader) {
    TileSet set;
    set.TileCount = reader.Int32();
    set.Terrain = reader.Byte();
    reader.RequireRecords(set.TileCount, TileBytes, "tiles");
    set.Tiles.reserve(Count(set.TileCount) + 1);
    for (int32_t i = 1; i <= set.TileCount; ++i)
        set.Tiles.push_back(ReadTile(reader));
    return set;
}

void WriteFloat(StagedFile& file, float value) {
    file.WriteInt32(std::bit_cast<int32_t>(value));
}

void WriteTile(StagedFile& file, const TileRecord& tile) {
    std::string name = tile.TileName;
    name.resize(TileNameLength, ' ');
    std::replace(name.begin(), name.end(), ' ', '\0');
    file.WriteText(name);
    file.WriteInt32(tile.NumAreas);
    file.WriteInt32(tile.NumPaths);
    for (int32_t i = 1; i <= tile.NumAreas; ++i) {
        const TileArea& area = tile.Areas.at(Count(i));
        file.WriteInt32(area.Type);
        for (const float value : {area.Radius, area.CenterX, area.CenterY})
            WriteFloat(file, value);
    }
    for (int32_t i = 1; i <= tile.NumPaths; ++i) {
        const TilePath& path = tile.Paths.at(Count(i));
        file.WriteInt32(path.Type);
        for (const float value :
             {path.Width, path.StartX, path.StartY, path.EndX, path.EndY})
            WriteFloat(file, value);
    }
}

FileBytes ReadBinFile(const std::string& path, FileIdentity& read) {
    const ReadingLock reading({path});
    const ReadableFile file(path);
    RequireAtMost(file, MaxBinBytes);
    read = file.Identity();
    return file.ReadAll();
}

// TileLookup with what `infoOf` tells of each tile; `afterSet` is called with the number
// of each set, from 1.
TileLookup
LookupOf(const TextureBin& bin,
         const std::function<TileInfo(const TileRecord&, const TileSet&)>& infoOf,
         const std::function<void(int32_t)>& afterSet) {
    TileLookup lookup(Count(bin.NumSets) * TilesPerSet);
    for (int32_t set = 1; set <= bin.NumSets; ++set) {
        const TileSet& tileSet = bin.Sets[Count(set)];
        size_t number = Count(set - 1) * TilesPerSet;
        for (int32_t i = 1; i <= tileSet.TileCount; ++i, ++number) {
            TileInfo info = infoOf(tileSet.Tiles[Count(i)], tileSet);
            // A set of more than 16 tiles runs into the next one's numbers, and past the
            // end of the table there is no number left for them.
            if (number < lookup.size())
                lookup[number] = std::move(info);
        }
        afterSet(set);
    }
    return lookup;
}

// Tells of pictures that are not there, one by one, until nobody wants to hear of them.
class MissingPictures {
public:
    MissingPictures(const TextureBin& bin, const PictureFolder& pictures,
                    const std::string& ddsFolder, Dialogs& dialogs)
        : bin_(bin), pictures_(pictures), ddsFolder_(ddsFolder), dialogs_(dialogs),
          several_(dynamic_cast<SeveralNotices*>(&dialogs)) {}

    void Tell(const TileInfo& info) {
        // Most theaters miss none.
        if (!left_)
            left_ = CountAll();
        --*left_;
        if (spared_)
            return;
        const std::string text = "File " + Utf8FromBytes(info.Name) + " wasn't found.";
        if (several_ == nullptr)
            return dialogs_.Notice(text, "", BoxIcon::Information);
        spared_ = several_->NoticeOfSeveral(
            text, "", BoxIcon::Information,
            ShownPath(TilePicturePath(ddsFolder_, info.DayFile)), *left_);
    }

private:
    // Also tiles that get no number.
    size_t CountAll() const {
        size_t missing = 0;
        for (const TileSet& set : bin_.Sets)
            for (size_t i = 1; i < set.Tiles.size(); ++i)
                if (InfoOfTile(set.Tiles[i], set, pictures_).HasImage == 0)
                    ++missing;
        return missing;
    }

    const TextureBin& bin_;
    const PictureFolder& pictures_;
    const std::string& ddsFolder_;
    Dialogs& dialogs_;
    SeveralNotices* several_;    // null where nobody can ask to be spared
    std::optional<size_t> left_; // not told of yet; counted when the first one is told
    bool spared_ = false;
};

} // namespace

TextureBin ParseBinFile(std::span<const std::byte> bytes, const std::string& path) {
    BinaryReader reader(bytes, path);
    TextureBin bin;
    bin.NumSets = reader.Int32();
    bin.NumTiles = reader.Int32();
    reader.RequireRecords(bin.NumSets, SetBytes, "sets");
    if (bin.NumSets > MaxSets)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           path + ": " + std::to_string(bin.NumSets) + " sets; at most " +
                               std::to_string(MaxSets) + " can be opened");
    bin.Sets.reserve(Count(bin.NumSets) + 1);
    for (int32_t set = 1; set <= bin.NumSets; ++set)
        bin.Sets.push_back(ReadSet(reader));
    return bin;
}

void OpenBinFile(Catalogue& catalogue, Progress& progress, Dialogs& dialogs,
                 DebugLog& log, const std::function<void()>& afterReading) {
    progress.SetBar(0);
    FileIdentity read;
    const FileBytes file = ReadBinFile(catalogue.BinPath, read);
    if (afterReading)
        afterReading();
    log.WriteLog("Opened BinPath...");
    TextureBin bin = ParseBinFile(file.Span(), catalogue.BinPath);
    log.WriteLog("Number of Sets: " + std::to_string(bin.NumSets));
    log.WriteLog("Number of Tiles: " + std::to_string(bin.NumTiles));

    const PictureFolder pictures(catalogue.DDSFolder);
    MissingPictures missing(bin, pictures, catalogue.DDSFolder, dialogs);
    TileLookup lookup = LookupOf(
        bin,
        [&](const TileRecord& tile, const TileSet& set) {
            TileInfo info = InfoOfTile(tile, set, pictures);
            if (info.HasImage == 0)
                missing.Tell(info);
            return info;
        },
        [&](int32_t set) {
            progress.SetBar(Percent(set, bin.NumSets));
            progress.LetEventsThrough();
        });
    catalogue.Bin = std::move(bin);
    catalogue.Read = read;
    catalogue.Lookup = std::move(lookup);
    catalogue.NewTilesList.clear();
    log.WriteLog("Closed BinPath...");
    log.WriteLog("Exiting OpenBinFile...");
}

void OpenBinFileAlone(Catalogue& catalogue) {
    FileIdentity read;
    const FileBytes file = ReadBinFile(catalogue.BinPath, read);
    TextureBin bin = ParseBinFile(file.Span(), catalogue.BinPath);
    catalogue.Lookup = LookupOf(
        bin,
        [](const TileRecord& tile, const TileSet& set) { return InfoOfTile(tile, set); },
        [](int32_t) {});
    catalogue.Bin = std::move(bin);
    catalogue.Read = read;
    catalogue.NewTilesList.clear();
}

void WriteBinFile(const TextureBin& bin, StagedFile& file) {
    file.WriteInt32(bin.NumSets);
    file.WriteInt32(bin.NumTiles);
    for (int32_t set = 1; set <= bin.NumSets; ++set) {
        const TileSet& tileSet = bin.Sets.at(Count(set));
        file.WriteInt32(tileSet.TileCount);
        file.Write(std::as_bytes(std::span(&tileSet.Terrain, 1)));
        for (int32_t i = 1; i <= tileSet.TileCount; ++i)
            WriteTile(file, tileSet.Tiles.at(Count(i)));
    }
}

void SaveBinFile(Catalogue& catalogue, DebugLog& log, IfChanged ifChanged) {
    const auto locks =
        LockFoldersOf({TargetOf(catalogue.BinPath)}, FolderLock::Exclusive);
    if (!FileExists(catalogue.BinPath))
        throw RuntimeError(ErrorNumber::FileNotFound, "replacing " + catalogue.BinPath);
    Transaction files;
    StagedFile& file = files.Stage(catalogue.BinPath, catalogue.Read, ifChanged);
    log.WriteLog("Killed BinPath...");
    log.WriteLog("Opened BinPath...");
    WriteBinFile(catalogue.Bin, file);
    files.Commit();
    catalogue.Read = file.Identity();
    log.WriteLog("Closed BinPath...");
    log.WriteLog("Exiting SaveBinFile...");
}

} // namespace vardenix
