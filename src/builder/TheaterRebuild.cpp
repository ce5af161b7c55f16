#include "builder/TheaterRebuild.h"

#include "builder/FartileMaking.h"
#include "builder/FartileShape.h"
#include "builder/LevelSaving.h"
#include "files/FileMark.h"
#include "files/FileNames.h"
#include "files/Transaction.h"

namespace vardenix {

namespace {

class Rebuild {
public:
    Rebuild(const RebuildParts& parts, const RebuildOptions& options, Fartiles& fartiles)
        : parts_(parts), options_(options),
          fartiles_(fartiles), levels_{parts.Terrain, LxFolderOf(parts.Terrain), files_,
                                       parts.View} {
        files_.How = options.OnlyChanged ? Rewriting::OnlyChanged : Rewriting::Always;
        files_.IfChanged = options.IfChanged;
    }

    RebuildReport Run() {
        const int64_t start = parts_.View.Seconds();
        parts_.View.SetLabel2("");
        parts_.View.SetStatus("Starting...");
        parts_.View.SetPB2_Max(StepsOfRebuild(parts_.Terrain.MapWidth, options_.MakeL3));
        parts_.View.SetPB2_val(0);
        fartiles_.FartileCount = 0;
        std::vector<std::string> all = AllFiles();
        // Of an intake that was killed half way, far tiles would show a mixture.
        if (options_.MakeL3 && !parts_.Catalogue.DDSFolder.empty())
            all.push_back(parts_.Catalogue.DDSFolder);
        files_.Hold(all, parts_.Log);
        RequireWhatIsNeeded();
        SaveFine(0);
        SaveFine(1);
        if (options_.MakeL3)
            MakeFarLevels();
        parts_.View.BeginTakingPlaces();
        files_.Commit(parts_.Log);
        // A container that is changed from now on is to show it by its time.
        if (options_.MakeL3)
            LetTickPass();
        parts_.View.SetStatus("All done...");
        return {files_.Made, files_.Fartiles, parts_.View.Seconds() - start};
    }

private:
    std::vector<std::string> AllFiles() const {
        return options_.MakeL3
                   ? FilesOfRebuild(levels_.LxFolder, TextureFolderOf(parts_.Catalogue))
                   : FilesOfLevels(levels_.LxFolder);
    }

    // Everything that can be known beforehand, so that nobody waits for an error.
    void RequireWhatIsNeeded() const {
        RoomNeeded levels{levels_.LxFolder, 0};
        for (const int32_t level : {0, 1})
            levels.Bytes += BytesOfFineLevel(parts_.Terrain, levels_.LxFolder, level);
        std::vector<RoomNeeded> needs;
        if (options_.MakeL3) {
            const FartileShape shape(options_.FarSize);
            for (const int32_t level : {3, 4, 5})
                levels.Bytes += BytesOfFarLevel(parts_.Terrain, levels_.LxFolder, level);
            needs.push_back({TextureFolderOf(parts_.Catalogue),
                             BytesOfFartiles(CountFartiles(parts_.Terrain).Count,
                                             parts_.Catalogue.Lookup.size(), shape)});
        }
        needs.push_back(levels);
        RequireRoom(needs, options_.FreeRoom);
    }

    void BeginStep() { parts_.View.BeginStep(++step_, options_.MakeL3 ? 6 : 2); }

    void SaveFine(int32_t level) {
        BeginStep();
        parts_.View.SetStatus("Saving L" + std::to_string(level) + " File...");
        SaveFineLevel(levels_, level, LevelNotExists(levels_.LxFolder, level));
    }

    void MakeFarLevels() {
        const FartileTotals totals = CountFartiles(parts_.Terrain);
        fartiles_.FartileList.Clear();
        fartiles_.FartileList.Reserve(totals.Count, totals.Serials);
        for (const int32_t level : {3, 4, 5}) {
            BeginStep();
            parts_.View.SetStatus("Saving L" + std::to_string(level) +
                                  " File and computing fartiles...");
            SaveFarLevel(levels_, fartiles_, level,
                         LevelNotExists(levels_.LxFolder, level));
        }
        BeginStep();
        parts_.View.SetStatus("Making the fartiles, please be patient...");
        MakeFartiles({parts_.Terrain, parts_.Catalogue, TextureFolderOf(parts_.Catalogue),
                      files_, parts_.View, options_.FarSize, options_.Threads},
                     fartiles_.FartileList);
    }

    const RebuildParts& parts_;
    const RebuildOptions& options_;
    Fartiles& fartiles_;
    RebuildFiles files_;
    LevelParts levels_;
    int step_ = 0;
};

std::string SizeOf(const RebuiltFile& file) {
    return ": " + std::to_string(file.Bytes) + " bytes" +
           (file.Unchanged ? ", unchanged" : "");
}

// What stands behind the files.
std::string EndOf(const RebuildReport& report) {
    std::string text;
    if (report.Fartiles.Copied > 0)
        text += std::to_string(report.Fartiles.Copied) + " far tiles taken over, " +
                std::to_string(report.Fartiles.Made) + " made\n";
    return text + std::to_string(report.Seconds) +
           (report.Seconds == 1 ? " second" : " seconds");
}

} // namespace

std::string LxFolderOf(const Terrain& terrain) {
    return UpToLastSlash(terrain.LFilename);
}

std::string TextureFolderOf(const Catalogue& catalogue) {
    return UpToLastSlash(catalogue.BinPath);
}

RebuildReport RebuildTheater(const RebuildParts& parts, const RebuildOptions& options,
                             Fartiles& fartiles) {
    return Rebuild(parts, options, fartiles).Run();
}

std::string TextOfReport(const RebuildReport& report) {
    std::string text;
    for (const RebuiltFile& file : report.Files)
        text += ShownPath(file.Path) + SizeOf(file) + "\n";
    return text + EndOf(report);
}

std::string TextByFolder(const RebuildReport& report) {
    std::string text;
    std::string folder;
    for (const RebuiltFile& file : report.Files) {
        const std::string path = ShownPath(file.Path);
        if (UpToLastSlash(path) != folder) {
            folder = UpToLastSlash(path);
            text += folder + "\n";
        }
        text += "    " + path.substr(folder.size()) + SizeOf(file) + "\n";
    }
    return text + EndOf(report);
}

} // namespace vardenix
