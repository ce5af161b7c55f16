#include "bineditor/BinCommands.h"

#include "bineditor/IntakeRisks.h"
#include "bineditor/LevelTwoPass.h"
#include "bineditor/RenumberQuestion.h"
#include "bineditor/TileIntake.h"
#include "catalogue/TileCheck.h"
#include "catalogue/TileNumbers.h"
#include "files/FileNames.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

constexpr const char* DdsFilter = "DDS File (*.dds)|*.dds";
constexpr const char* NormalTilesOnly =
    "Select ONLY normal tiles. Night tiles (if any) will be copied automatically.";
constexpr size_t MostTiles = TilesPerSet;

// The window is locked and shows its bar, however the work ends.
class LongWork {
public:
    explicit LongWork(const BinParts& parts) : parts_(parts), bar_(parts.PB5) {
        parts_.PB5.SetBar(0);
        parts_.Window.PrepareForm(false);
    }
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    ~LongWork() {
        parts_.PB5.SetText({});
        parts_.Window.PrepareForm(true);
    }

private:
    const BinParts& parts_;
    ShownBar bar_;
};

// What `work` throws is told in a plain box, but for a cancelled dialog.
template <typename Work>
std::optional<TilePlace> Trapped(Dialogs& dialogs, Work work) {
    try {
        return work();
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            dialogs.Notice(error.Detail().empty()
                               ? error.Description()
                               : error.Description() + "\n" + error.Detail(),
                           {}, BoxIcon::None);
        return std::nullopt;
    }
}

void CorrectLevelTwo(const BinParts& parts, const TileRenumbering& numbers,
                     const BarShare& share) {
    const bool changed = RenumberLevelTwo(parts.Terrain, numbers, share, parts.PB5);
    parts.Window.LevelTwoRenumbered(numbers, changed);
}

bool Refuse(Dialogs& dialogs, const std::string& text, const std::string& title = {}) {
    dialogs.Notice(text, title, BoxIcon::Critical);
    return false;
}

bool CanBecomeSet(const std::vector<std::string>& files, Dialogs& dialogs) {
    if (files.size() > MostTiles)
        return Refuse(dialogs,
                      "The maximum munber of tiles in a new set is 16. You selected " +
                          std::to_string(files.size()) + " pictures to be imported.",
                      "Error");
    for (const std::string& file : files)
        if (!NameOfDds(file))
            return Refuse(dialogs, NotAnImage(AfterLastSlash(file)), "Error");
    return true;
}

bool CanBecomeTile(const std::string& file, Dialogs& dialogs) {
    if (!UpperCase(file).ends_with("DDS"))
        return Refuse(dialogs, "Invalid extension for pcx or dds image");
    if (!NameOfDds(file))
        return Refuse(dialogs, NotAnImage(AfterLastSlash(file)), "Error");
    return true;
}

std::string CatalogueNameOfFile(const std::string& file) {
    return TileNameField(BytesFromUtf8(CatalogueName(HName(AfterLastSlash(file)))));
}

TileSet SetOfFiles(const std::vector<std::string>& files, uint8_t terrain) {
    TileSet set;
    set.Terrain = terrain;
    for (const std::string& file : files) {
        set.Tiles.emplace_back().TileName = CatalogueNameOfFile(file);
        ++set.TileCount;
    }
    return set;
}

bool TakeIn(const BinParts& parts, const std::vector<std::string>& files) {
    const IntakePlace place =
        IntakePlaceOf(parts.Catalogue.DDSFolder, parts.Folders, parts.Settings);
    const auto stop = [&] { return parts.Window.StopWanted(); };
    if (parts.Together != nullptr)
        return StagePictures(files, place, *parts.Together, parts.PB5, stop);
    std::shared_ptr<FileSwap> replaced;
    if (parts.Replaced != nullptr)
        replaced = std::make_shared<FileSwap>(TargetsOf(files, place.DDSFolder));
    if (!TakeInPictures(files, place, parts.PB5, stop))
        return false;
    if (replaced && !replaced->Empty()) {
        replaced->Replaced();
        *parts.Replaced = std::move(replaced);
    }
    return true;
}

// Nobody loses a picture, or the user says so.
bool MayTakeIn(const BinParts& parts, const std::vector<std::string>& files,
               std::optional<int32_t> replaced) {
    const IntakeRisks risks = RisksOfIntake(parts.Catalogue, files, replaced);
    return risks.None() || parts.Dialogs.MessageBox(TextOfRisks(risks, parts.Catalogue) +
                                                        "\nDo you want to go on?",
                                                    "Attention", BoxIcon::Warning,
                                                    BoxButtons::YesNo) == BoxAnswer::Yes;
}

// The slot that a new tile goes to: the first empty one, whichever empty one is selected.
int32_t SlotForTile(const Catalogue& catalogue, const TilePlace& selected) {
    // Not by TileLookup: tiles of a set of more than 16 stand there in the next one's
    // slots.
    return std::min(selected.Slot, SetAt(catalogue.Bin, selected.Set).TileCount);
}

TileInfo InfoOfFile(const std::string& file, const std::string& field, uint8_t terrain) {
    TileInfo info;
    info.Name = TrimBlanks(field);
    info.DayFile = BytesFromUtf8(HName(AfterLastSlash(file)));
    info.NightFile = BytesFromUtf8(FamilyOf(AfterLastSlash(file)).HNight);
    info.Terrain = terrain;
    info.UseCount = 0;
    info.HasImage = 1;
    return info;
}

} // namespace

std::optional<TilePlace> AppendSet(const BinParts& parts, int32_t place, uint8_t terrain,
                                   const std::vector<std::string>& files, bool correct) {
    TileSet set = SetOfFiles(files, terrain);
    // Without sets no number has a picture that could be lost.
    const bool first = parts.Catalogue.Bin.NumSets == 0;
    if (!TakeIn(parts, files))
        return std::nullopt;
    const TileRenumbering numbers =
        InsertSet(parts.Catalogue, place, std::move(set), parts.PB5);
    parts.Window.NeedSave();
    if (correct && !first)
        CorrectLevelTwo(parts, numbers, {75, 100});
    return TilePlace{place, 0};
}

std::optional<TilePlace> cmdAppendSet(const BinParts& parts, const TilePlace& selected,
                                      uint8_t terrain, const DroppedFiles& dropped) {
    const bool after = parts.Settings.DefInsertAfter;
    if (!MayRenumber(NumberEdit::AppendSet,
                     AppendMatters(parts.Catalogue.Bin, selected.Set, after),
                     parts.Settings.AutoL2, parts.Dialogs))
        return std::nullopt;
    return Trapped(parts.Dialogs, [&]() -> std::optional<TilePlace> {
        const LongWork work(parts);
        const std::vector<std::string> files =
            dropped ? *dropped : parts.Dialogs.OpenFiles({NormalTilesOnly, DdsFilter});
        if (files.empty() || !CanBecomeSet(files, parts.Dialogs) ||
            !MayTakeIn(parts, files, {}))
            return std::nullopt;
        return AppendSet(parts, PlaceOfNewSet(selected.Set, after).Set, terrain, files,
                         parts.Settings.AutoL2);
    });
}

std::optional<TilePlace> TakeInTile(const BinParts& parts, const TilePlace& place,
                                    const std::string& file) {
    Catalogue& catalogue = parts.Catalogue;
    TileSet& set = SetAt(catalogue.Bin, place.Set);
    TileInfo& info = InfoAt(catalogue, NumberOfPlace(place));
    const bool replace = HasTile(catalogue.Bin, place.Set, place.Slot);
    std::string field = CatalogueNameOfFile(file);
    TileInfo newInfo = InfoOfFile(file, field, set.Terrain);
    TileRecord record;
    if (!replace)
        set.Tiles.reserve(set.Tiles.size() + 1);
    if (!TakeIn(parts, {file}))
        return std::nullopt;
    info = std::move(newInfo);
    if (!replace) {
        set.Tiles.push_back(std::move(record));
        ++set.TileCount;
        ++catalogue.Bin.NumTiles;
    }
    TileAt(catalogue.Bin, place.Set, place.Slot).TileName = std::move(field);
    parts.Window.NeedSave();
    return place;
}

std::optional<TilePlace> cmdAppendTile(const BinParts& parts, const TilePlace& selected,
                                       const DroppedFiles& dropped) {
    if (selected.Slot < 0 || !HasSet(parts.Catalogue.Bin, selected.Set))
        return std::nullopt;
    return Trapped(parts.Dialogs, [&]() -> std::optional<TilePlace> {
        const LongWork work(parts);
        const std::string file =
            dropped ? dropped->front() : parts.Dialogs.OpenFile({{}, DdsFilter}).Path;
        const TilePlace place{selected.Set, SlotForTile(parts.Catalogue, selected)};
        if (!CanBecomeTile(file, parts.Dialogs) ||
            !MayTakeIn(parts, {file}, FirstNumberOf(place.Set) + place.Slot))
            return std::nullopt;
        return TakeInTile(parts, place, file);
    });
}

void CountUses(const Terrain& terrain, TileLookup& lookup) {
    std::vector<bool> empty;
    for (const TileInfo& info : lookup)
        empty.push_back(info.UseCount == -1);
    CountTileUse(terrain, lookup);
    for (size_t number = 0; number < lookup.size(); ++number)
        if (empty[number] && lookup[number].UseCount == 0)
            lookup[number].UseCount = -1;
}

std::optional<TilePlace> cmdDeleteSet(const BinParts& parts, int32_t set) {
    Catalogue& catalogue = parts.Catalogue;
    SetAt(catalogue.Bin, set);
    CountUses(parts.Terrain, catalogue.Lookup);
    const bool matters = DeleteSetMatters(catalogue, set);
    if (!MayRenumber(NumberEdit::DeleteSet, matters, parts.Settings.AutoL2,
                     parts.Dialogs))
        return std::nullopt;
    const LongWork work(parts);
    const TileRenumbering numbers = DeleteSet(catalogue, set);
    parts.Window.NeedSave();
    if (parts.Settings.AutoL2 && matters)
        CorrectLevelTwo(parts, numbers, {});
    CountTileUse(parts.Terrain, catalogue.Lookup);
    return TilePlace{std::min(set, catalogue.Bin.NumSets), 0};
}

bool CanDeleteTile(const TextureBin& bin, const TilePlace& selected) {
    return HasTile(bin, selected.Set, selected.Slot) &&
           SetAt(bin, selected.Set).TileCount > 1;
}

std::optional<TilePlace> cmdDeleteTile(const BinParts& parts, const TilePlace& selected) {
    Catalogue& catalogue = parts.Catalogue;
    TileAt(catalogue.Bin, selected.Set, selected.Slot);
    CountUses(parts.Terrain, catalogue.Lookup);
    const bool matters = DeleteTileMatters(catalogue, selected.Set, selected.Slot);
    if (!MayRenumber(NumberEdit::DeleteTile, matters, parts.Settings.AutoL2,
                     parts.Dialogs))
        return std::nullopt;
    const LongWork work(parts);
    const TileRenumbering numbers = DeleteTile(catalogue, selected.Set, selected.Slot);
    parts.Window.NeedSave();
    if (parts.Settings.AutoL2 && matters)
        CorrectLevelTwo(parts, numbers, {});
    const int32_t tiles = SetAt(catalogue.Bin, selected.Set).TileCount;
    return TilePlace{selected.Set, std::min(selected.Slot, tiles - 1)};
}

std::optional<TilePlace> MoveSetNow(const BinParts& parts, int32_t source, int32_t target,
                                    bool before) {
    if (!MayRenumber(NumberEdit::MoveSet, true, parts.Settings.AutoL2, parts.Dialogs))
        return std::nullopt;
    const LongWork work(parts);
    const TileRenumbering numbers =
        MoveSet(parts.Catalogue, source, target, before, parts.PB5);
    parts.Window.NeedSave();
    if (parts.Settings.AutoL2)
        CorrectLevelTwo(parts, numbers, {66, 100});
    return TilePlace{SetOfNumber(numbers.Of(FirstNumberOf(source))), 0};
}

} // namespace vardenix
