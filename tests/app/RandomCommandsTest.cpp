// Commands of every room upon one theater, with walks through the log, held against whole
// copies; and what recovery makes of the log at any moment.
#include "bineditor/LevelTwoPass.h"
#include "bineditor/SetsAndTiles.h"
#include "catalogue/TextureBinFile.h"
#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "levels/ElevationFiles.h"
#include "levels/TerrainStore.h"
#include "mapeditor/MapFile.h"
#include "program/PaperSaving.h"
#include "program/ProgramState.h"
#include "recovery/LogKeeper.h"
#include "recovery/Restoring.h"
#include "search/Replacing.h"
#include "support/FakePlatform.h"
#include "support/RecordingCommands.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "workspace/PostClip.h"
#include "workspace/PostShaping.h"
#include "workspace/RestorePoint.h"
#include "workspace/UndoPoints.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <random>

namespace vardenix {
namespace {

using tests::TestFolder;

constexpr int32_t Side = 32;

std::string TextOf(std::span<const std::byte> bytes) {
    std::string text(bytes.size(), '\0');
    if (!bytes.empty())
        std::memcpy(text.data(), bytes.data(), bytes.size());
    return text;
}

// A run of the program over the theater of a folder, without windows.
class Session : private ChangeFollower {
public:
    // Level 2, the loaded heights with their path, catalogue, theater.map, features.
    using Copy = std::array<std::string, 5>;

    explicit Session(const TestFolder& folder) : folder_(folder) {
        Terrain& terrain = State.Terrain;
        terrain.LFilename = folder.File("theater.L2");
        terrain.OFilename = folder.File("theater.O2");
        if (!std::filesystem::exists(terrain.LFilename))
            MakeFiles();
        LoadLFile(terrain, quiet_, log_);
        State.Catalogue.BinPath = folder.File("Texture.bin");
        State.Catalogue.DDSFolder = folder.Path() + "/";
        State.Catalogue.Bin =
            ParseBinFile(ReadWholeFile(State.Catalogue.BinPath, 1 << 20).Span(), "");
        State.Catalogue.Read = IdentityOfRealPath(State.Catalogue.BinPath);
        RebuildTileLookup(State.Catalogue, {}, quiet_);
        State.MAPFile = folder.File("theater.map");
        State.MAPFileRead = IdentityOfRealPath(State.MAPFile);
        const FileBytes map = ReadWholeFile(State.MAPFile, 2000);
        std::memcpy(&State.MapFileRecord, map.data(), sizeof State.MapFileRecord);
        State.Changes.Follow(*this);
    }

    Copy Copied() const {
        const ElevationLayer& heights = State.Terrain.Elevations;
        return {TextOf(std::as_bytes(State.Terrain.LxArr.Values())),
                heights.Path + TextOf(std::as_bytes(heights.L0ElvArr.Values())),
                TextOf(BytesOf(State.Catalogue.Bin)),
                TextOf(std::as_bytes(std::span(&State.MapFileRecord, 1))),
                std::to_string(State.Features.Cities.size())};
    }

    void LoadHeights(const std::string& path) {
        ElevationLayer before = std::move(State.Terrain.Elevations);
        State.Terrain.Elevations = {};
        ASSERT_TRUE(LoadElevationData(State.Terrain, ElevationKind::Elv, path, quiet_,
                                      platform_.Dialogs, log_));
        if (before.Kind == ElevationKind::None) {
            Undo.ForgetElevations();
            State.Changes.LoadedAnew(Paper::Heights);
        } else {
            Recording made(State.Changes, {}, "Load " + path);
            Undo.ForgetElevations();
            made.Replaced(std::move(before));
        }
        State.Changes.Saved(Paper::Heights);
    }

    // True when it has made a change, or gone on with one.
    bool Command() {
        recorded_ = false;
        switch (UpTo(16)) {
        case 0:
            Paint(false);
            break;
        case 1:
            Paint(true);
            break;
        case 2:
            EditOnePost();
            break;
        case 3:
            UpTo(1) == 0 ? Undo.Undo(Layer::Posts) : Undo.Redo(Layer::Posts);
            break;
        case 4:
            PaintHeights();
            break;
        case 5:
            UpTo(1) == 0 ? Undo.Undo(Layer::Heights) : Undo.Redo(Layer::Heights);
            break;
        case 6:
            AddDelta("Raise", BrushedHeights(State.Terrain, {Place(), Place()},
                                             {PostShape::Raise, 300, 5, true}));
            break;
        case 7:
            Stamp();
            break;
        case 8:
            Replace();
            break;
        case 9:
            Import();
            break;
        case 10:
            EditSets();
            break;
        case 11:
            EditMap();
            break;
        case 12:
            RestorePoint();
            break;
        case 13:
            Rebuild();
            break;
        case 14:
            if (UpTo(2) == 0)
                LoadHeights(folder_.File(UpTo(1) == 0 ? "one.elv" : "two.elv"));
            break;
        case 15: {
            const Recording made(State.Changes, {Paper::Features}, "Load Cities.tdf");
            State.Features.Cities.emplace_back();
            break;
        }
        default:
            Save();
        }
        Undo.EndStroke();
        return recorded_;
    }

    int UpTo(int most) {
        return static_cast<int>(random_() % (static_cast<unsigned>(most) + 1));
    }

    ProgramState State;
    tests::RecordingCommands Commands;
    UndoPoints Undo{State.Terrain, State.Changes, Commands};

private:
    void Recorded(const Change& /*change*/) override { recorded_ = true; }
    void Walked(const Change& /*change*/, Walk /*walk*/) override {}

    void MakeFiles() {
        Terrain& terrain = State.Terrain;
        terrain.MapWidth = Side;
        terrain.LxArr = PostArray(Side * Side);
        SaveTheater(terrain, {terrain.LFilename, terrain.OFilename}, quiet_,
                    IfChanged::Refuse);
        for (const char* name : {"one.elv", "two.elv"})
            folder_.Write(name, std::string(32 * Side * Side, '\0'));
        folder_.Write("theater.map", std::string(sizeof State.MapFileRecord, '\0'));
        folder_.Write("Texture.bin",
                      tests::CatalogueBytes({{1, {{"H0.PCX"}, {"H1.PCX"}}},
                                             {4, {{"LAND.PCX"}}},
                                             {9, {{"TOWN.PCX"}, {"CITY.PCX"}}}}));
    }

    PostPlace Place() { return {UpTo(Side - 1), UpTo(Side - 1)}; }
    Selection Selected() {
        const PostPlace corner = Place();
        return SelectedBox({corner.X, corner.Y, corner.X + UpTo(6), corner.Y + UpTo(6)},
                           Side);
    }

    std::vector<TileRun> Runs() {
        const int32_t tile = UpTo(40);
        const Selection selected = Selected();
        std::vector<TileRun> runs;
        for (const RowSpan& span : selected.Spans())
            for (int32_t x = span.X1; x <= span.X2; ++x) {
                const int32_t serial = span.Y * Side + x + 1;
                int32_t& number = State.Terrain.LxArr(serial).TileOffset;
                if (number != tile)
                    runs.push_back({serial, 1, number, tile});
                number = tile;
            }
        return runs;
    }
    void Paint(bool goesOn) {
        Undo.AddStroke(Runs());
        if (!goesOn)
            return;
        Undo.OpenStroke();
        for (int i = UpTo(4); i >= 0; --i)
            Undo.ExtendStroke(Runs());
    }
    void EditOnePost() {
        const int32_t serial = 1 + UpTo(Side * Side - 1);
        TerrainPost& post = State.Terrain.LxArr(serial);
        const TerrainPost old = post;
        post = {UpTo(30), static_cast<int16_t>(UpTo(4000)), 1, 2, 3};
        if (!(post == old))
            Undo.AddPostUndo(old, post, serial);
    }
    void PaintHeights() {
        HeightArray& heights = State.Terrain.Elevations.L0ElvArr;
        std::vector<HeightRun> runs;
        const int32_t first = 1 + UpTo(heights.UpperBound() - 20);
        for (int32_t serial = first; serial < first + 9; ++serial) {
            const auto feet = static_cast<int16_t>(UpTo(900));
            if (heights(serial) != feet)
                runs.push_back({serial, 1, heights(serial), feet});
            heights(serial) = feet;
        }
        Undo.AddStroke(std::move(runs));
    }
    void AddDelta(const char* name, PostDelta delta) {
        WriteNew(State.Terrain.LxArr, delta);
        Change change{.Name = name};
        change.Posts = std::move(delta);
        State.Changes.Add(std::move(change));
    }
    void Stamp() {
        const PostClip clip = ClipOf(State.Terrain, Selected());
        if (UpTo(2) == 0)
            return AddDelta("Cut", CutPosts(State.Terrain, Selected(), {}));
        const PostPlace to = Place();
        AddDelta("Paste", StampedPosts(State.Terrain, clip, {to.X - 2, to.Y - 2}, {}));
    }
    void Replace() {
        Replacement replacement{.Old = TileMarks(64, 0),
                                .Seed = static_cast<uint32_t>(random_())};
        for (int i = 0; i < 10; ++i)
            replacement.Old[static_cast<size_t>(UpTo(40))] = 1;
        replacement.New = {UpTo(40), UpTo(40)};
        std::vector<TileRun> runs =
            ReplacedRuns(State.Terrain, replacement, WholeTerrain(State.Terrain));
        for (const TileRun& run : runs)
            for (int32_t i = 0; i < run.Count; ++i)
                State.Terrain.LxArr(run.Serial + i).TileOffset = run.NewValue;
        Undo.AddStroke(std::move(runs));
    }
    void Import() {
        const Recording made(State.Changes, {Paper::Level2}, "Import coast.exp");
        for (int i = 0; i < 60; ++i)
            State.Terrain.LxArr(1 + UpTo(Side * Side - 1)) = {
                UpTo(40), static_cast<int16_t>(UpTo(900)), 4, 5, 6};
    }
    // With the pass over level 2, which now and then is put off.
    void EditSets() {
        Catalogue& catalogue = State.Catalogue;
        const int32_t sets = catalogue.Bin.NumSets;
        const int32_t set = 1 + UpTo(std::max(sets - 1, 0));
        const int what = sets == 0 ? 0 : UpTo(3);
        Recording made(State.Changes, {Paper::Catalogue, Paper::Level2}, "Sets");
        if (what == 3)
            return ChangeSetType(catalogue, set, static_cast<uint8_t>(1 + UpTo(8)));
        TileRenumbering numbers;
        if (what == 0) {
            TileRecord tile;
            tile.TileName = TileNameField("N" + std::to_string(UpTo(99)) + ".pcx");
            TileSet added;
            added.TileCount = 1;
            added.Terrain = 4;
            added.Tiles.push_back(tile);
            numbers = InsertSet(catalogue, sets == 0 ? 1 : set, std::move(added), quiet_);
        } else if (what == 1) {
            numbers = DeleteSet(catalogue, set);
        } else {
            const int32_t target = 1 + UpTo(sets - 1);
            if (target == set)
                return;
            numbers = MoveSet(catalogue, set, target, UpTo(1) == 0, quiet_);
        }
        RebuildTileLookup(catalogue, {}, quiet_);
        const bool pass = UpTo(3) != 0;
        if (pass) {
            RenumberLevelTwo(State.Terrain, numbers, {}, quiet_);
            Undo.TilesRenumbered(numbers);
        }
        State.Numbers.Passed(numbers, pass);
    }
    void EditMap() {
        const Recording made(State.Changes, {Paper::MapFile}, "Colour");
        State.MapFileRecord.Palette[UpTo(255)].Green = static_cast<uint8_t>(UpTo(255));
    }
    void RestorePoint() {
        const std::string folder = folder_.Path() + "/";
        if (UpTo(1) == 0)
            return CreateRestorePoint(State.Terrain, LocalTime{}, folder);
        const Recording made(State.Changes, {Paper::Level2}, "RESTORE");
        RestoreFromPoint(State.Terrain, folder);
    }
    // As one reads level 2 anew.
    void Rebuild() {
        {
            const Recording made(State.Changes, {Paper::Level2},
                                 "Level 2 read anew after a rebuild");
            LoadLFile(State.Terrain, quiet_, log_);
            Undo.ForgetPosts();
        }
        State.Numbers.LevelTwoReadAnew();
        State.Changes.Saved(Paper::Level2);
    }
    void Save() {
        const auto paper = AllPapers.at(static_cast<size_t>(UpTo(3)));
        if (paper == Paper::Heights)
            SaveElevationData(State.Terrain, ElevationKind::Elv, {}, quiet_,
                              platform_.Dialogs, IfChanged::Overwrite);
        else
            SavePapers(State, {paper}, quiet_, log_, IfChanged::Overwrite);
        State.Changes.Saved(paper);
    }

    const TestFolder& folder_;
    tests::FakePlatform platform_;
    DebugLog log_{platform_.Clock};
    NoProgress quiet_;
    std::mt19937 random_{23};
    bool recorded_ = false;
};

struct LoadsHeights : RestoringWindows {
    explicit LoadsHeights(Session& run) : Program(run) {}
    bool LoadHeights(ElevationKind, const std::string& path) override {
        Program.LoadHeights(path);
        return true;
    }
    void KeepRestored() override {}
    Session& Program;
};

class RandomCommandsTest : public testing::Test {
protected:
    // What another run has after restoring what this one would leave by a kill.
    void ExpectRestored(LogKeeper& keeper, const Session& run) {
        // A file of heights that was loaded twice and saved from the one is another for
        // the other.
        const ElevationLayer& layer = run.State.Terrain.Elevations;
        if (!(layer.Read == IdentityOfRealPath(layer.Path)))
            return;
        keeper.Drain();
        const std::string copied = folder_.File("copied");
        std::filesystem::remove_all(copied);
        std::filesystem::copy(logs_, copied);
        Session next(folder_);
        LoadsHeights windows(next);
        const Session::Copy now = run.Copied();
        const Session::Copy disk = next.Copied();
        const LeftLogs left = LeftLogsOf(copied, next.State.Terrain.LFilename);
        bool heights = false;
        for (const LeftLog& log : left.Logs) {
            ASSERT_EQ(WhyUnfit(log.Story), "");
            RestoreChanges(next.State, log, windows);
            heights = log.Story.LastInUse;
        }
        const Session::Copy restored = next.Copied();
        for (const size_t paper : {0U, 2U, 3U}) {
            EXPECT_TRUE(restored.at(paper) == now.at(paper)) << paper;
        }
        if (run.State.Changes.Unsaved(Paper::Heights)) {
            EXPECT_TRUE(heights && restored[1] == now[1]);
        }
        while (next.State.Changes.NextBack() != nullptr)
            next.State.Changes.Back();
        for (const size_t paper : {0U, 2U, 3U}) {
            EXPECT_TRUE(next.Copied().at(paper) == disk.at(paper)) << paper;
        }
    }

    TestFolder folder_;
    std::string logs_ = folder_.File("data/recovery");
};

TEST_F(RandomCommandsTest, AThousandCommandsOfAllRoomsAgreeWithWholeCopies) {
    Session run(folder_);
    LogKeeper keeper(run.State, logs_);
    ChangeLog& changes = run.State.Changes;
    run.LoadHeights(folder_.File("one.elv"));
    std::vector<Session::Copy> states{run.Copied()}; // by the log's position
    for (int round = 0; round < 1000; ++round) {
        if (run.Command()) {
            states.resize(changes.Position());
            states.push_back(run.Copied());
        }
        ASSERT_EQ(changes.Count() + 1, states.size()) << "round " << round;
        ASSERT_TRUE(run.Copied() == states.at(changes.Position())) << "round " << round;
        if (round % 50 == 0) {
            ASSERT_NO_FATAL_FAILURE(ExpectRestored(keeper, run)) << "round " << round;
            ASSERT_FALSE(HasFailure()) << "round " << round;
        }
        if (round % 7 != 0)
            continue;
        for (int steps = run.UpTo(12); steps > 0; --steps) {
            if (run.UpTo(2) != 0 && changes.NextBack() != nullptr)
                changes.Back();
            else if (changes.NextAgain() != nullptr)
                changes.Again();
            ASSERT_TRUE(run.Copied() == states.at(changes.Position()))
                << "round " << round;
        }
    }
    while (changes.NextBack() != nullptr)
        changes.Back();
    EXPECT_TRUE(run.Copied() == states.front());
    while (changes.NextAgain() != nullptr)
        changes.Again();
    EXPECT_TRUE(run.Copied() == states.back());
}

} // namespace
} // namespace vardenix
