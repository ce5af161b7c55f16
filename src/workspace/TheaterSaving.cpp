#include "workspace/TheaterSaving.h"

#include "files/FileNames.h"
#include "levels/ElevationFiles.h"
#include "levels/TerrainStore.h"
#include "platform/SavedOrKept.h"
#include "program/MissingSegments.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

namespace vardenix {

namespace {

constexpr const char* ElevationFilter = "L0 Files (*.l0)|*.l0|ELV files (*.elv)|*.elv";
constexpr const char* LevelFilter = "L2 Files (*.l2)|*.l2";
constexpr const char* LoseElevations =
    "The L0/ELV file has changes that are not saved. Do you want to load another file "
    "and lose them?";

// The panel is locked and the map takes no clicks, however the work ends.
class LongWork {
public:
    explicit LongWork(const SavingParts& parts)
        : panel_(parts.Panel), busy_(parts.View), bar_(parts.PB3) {
        panel_.LockPanel(true);
    }
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    ~LongWork() { panel_.LockPanel(false); }

private:
    SavingPanel& panel_;
    ScrollBusyWhile busy_;
    ShownBar bar_;
};

// Runs `work`; what it throws is told, but for a cancelled dialog. False, or nothing,
// then.
template <typename Work>
auto Trapped(Dialogs& dialogs, Work work) -> decltype(work()) {
    try {
        return work();
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        return {};
    }
}

// The kind that a filter of the dialogs stands for, when the name fits it.
ElevationKind KindOf(const FileAnswer& answer) {
    const ElevationKind kind = KindOfElevationFile(answer.Path);
    return static_cast<int>(kind) == answer.FilterIndex ? kind : ElevationKind::None;
}

void TellNoExtension(Dialogs& dialogs) {
    dialogs.Notice("Not a valid extension.", "Error!", BoxIcon::Critical);
}

// Before a name is taken, `to` is where the loaded file would go.
std::optional<std::string> SaveElevations(const SavingParts& parts, bool as) {
    FileAnswer to{.Path = {}, .FilterIndex = 0};
    ElevationKind kind = ElevationKind::None;
    if (as) {
        to = parts.Dialogs.SaveFile({.Title = {},
                                     .Filter = ElevationFilter,
                                     .InitialPath = parts.Terrain.Elevations.Path});
        kind = KindOf(to);
        if (kind == ElevationKind::None) {
            TellNoExtension(parts.Dialogs);
            return {};
        }
    }
    bool saveOK = false;
    const auto save = [&](IfChanged ifChanged) {
        const LongWork work(parts);
        saveOK = SaveElevationData(parts.Terrain, kind, to.Path, parts.PB3, parts.Dialogs,
                                   ifChanged) == ElevationSave::Done;
    };
    if (!SavedOrKept(parts.Dialogs, save) || !saveOK)
        return {};
    parts.Panel.L0Saved();
    return as ? to.Path : parts.Terrain.Elevations.Path;
}

// The dialog asks about the L file; an O file that has none beside it would go with no
// word.
bool MayReplaceOffsets(const LevelPair& pair, Dialogs& dialogs) {
    return FileExists(pair.L) || !FileExists(pair.O) ||
           dialogs.MessageBox(pair.O + " already exists.\nDo you want to replace it?", {},
                              BoxIcon::Warning, BoxButtons::YesNo) == BoxAnswer::Yes;
}

std::optional<std::string> SaveLevel2(const SavingParts& parts, bool as) {
    std::string to;
    if (as)
        to = parts.Dialogs
                 .SaveFile({.Title = {},
                            .Filter = LevelFilter,
                            .InitialPath = parts.Terrain.LFilename})
                 .Path;
    const LevelPair pair = PairForSaving(parts.Terrain, to);
    if (as && !MayReplaceOffsets(pair, parts.Dialogs))
        return {};
    if (SameFile(pair.L, parts.Terrain.LFilename) &&
        !MaySaveOverGap(parts.Terrain, parts.Dialogs))
        return {};
    const auto save = [&](IfChanged ifChanged) {
        const LongWork work(parts);
        SaveTheater(parts.Terrain, pair, parts.PB3, ifChanged);
    };
    if (!SavedOrKept(parts.Dialogs, save))
        return {};
    parts.Panel.L2Saved();
    return pair.L;
}

bool MayLoseElevations(const SavingParts& parts) {
    return !parts.Panel.L0NeedSaveFlag() ||
           parts.Dialogs.MessageBox(LoseElevations, "Confirm", BoxIcon::Question,
                                    BoxButtons::YesNo) == BoxAnswer::Yes;
}

// What was loaded before; nothing where it stays.
std::optional<ElevationLayer> LoadAndShow(const SavingParts& parts, ElevationKind kind,
                                          const std::string& path) {
    const LongWork work(parts);
    Terrain other;
    other.MapWidth = parts.Terrain.MapWidth;
    if (!LoadElevationData(other, kind, path, parts.PB3, parts.Dialogs, parts.Log))
        return {};
    std::swap(parts.Terrain.Elevations, other.Elevations);
    other.Elevations.AbandonedXFile.Close();
    if (parts.Panel.L0NeedSaveFlag())
        parts.Panel.L0Saved();
    parts.Panel.SetL0FileName(path);
    return std::move(other.Elevations);
}

} // namespace

std::optional<std::string> CmdSaveTheater(const SavingParts& parts, bool as) {
    return Trapped(parts.Dialogs, [&] {
        return parts.View.L0Mode ? SaveElevations(parts, as) : SaveLevel2(parts, as);
    });
}

std::optional<ElevationLayer> cmdLoadL0Elv(const SavingParts& parts) {
    return Trapped(parts.Dialogs, [&]() -> std::optional<ElevationLayer> {
        const std::string& loaded = parts.Terrain.Elevations.Path;
        const FileAnswer from = parts.Dialogs.OpenFile(
            {.Title = {},
             .Filter = ElevationFilter,
             .InitialPath =
                 loaded.empty() ? UpToLastSlash(parts.Terrain.LFilename) : loaded});
        const ElevationKind kind = KindOf(from);
        if (kind == ElevationKind::None) {
            TellNoExtension(parts.Dialogs);
            return {};
        }
        if (!MayLoseElevations(parts))
            return {};
        return LoadAndShow(parts, kind, from.Path);
    });
}

std::optional<ElevationLayer> TakeElevationFile(const SavingParts& parts,
                                                const std::string& path) {
    return Trapped(parts.Dialogs, [&]() -> std::optional<ElevationLayer> {
        const std::string name = UpperCase(path);
        const ElevationKind kind = name.ends_with(".L0")    ? ElevationKind::L0
                                   : name.ends_with(".ELV") ? ElevationKind::Elv
                                                            : ElevationKind::None;
        if (kind == ElevationKind::None) {
            TellNoExtension(parts.Dialogs);
            return {};
        }
        if (!MayLoseElevations(parts))
            return {};
        return LoadAndShow(parts, kind, path);
    });
}

std::optional<ElevationLayer> LoadL0ElvFile(const SavingParts& parts, ElevationKind kind,
                                            const std::string& path) {
    return Trapped(parts.Dialogs, [&] { return LoadAndShow(parts, kind, path); });
}

} // namespace vardenix
