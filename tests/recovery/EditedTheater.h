#pragma once

#include "catalogue/TextureBinFile.h"
#include "program/ProgramState.h"
#include "support/TestFolder.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vardenix::tests {

// The bytes of each paper, taken whole: level 2, heights, catalogue, theater.map.
using WholePapers = std::array<std::string, 4>;

inline std::string TextOfBytes(std::span<const std::byte> bytes) {
    std::string text(bytes.size(), '\0');
    if (!bytes.empty())
        std::memcpy(text.data(), bytes.data(), bytes.size());
    return text;
}

// A small theater whose files lie in a folder, and commands of every kind upon it.
class EditedTheater {
public:
    static constexpr int32_t Width = 32;

    explicit EditedTheater(const TestFolder& folder)
        : State(std::make_unique<ProgramState>()) {
        Terrain& terrain = State->Terrain;
        terrain.MapWidth = Width;
        terrain.LxArr = PostArray(Width * Width);
        terrain.Elevations.EMapWidth = 4 * Width;
        terrain.Elevations.L0ElvArr = HeightArray(16 * Width * Width);
        terrain.Elevations.Kind = ElevationKind::Elv;
        const auto file = [&folder](const char* name, FileIdentity& read) {
            std::string path = folder.File(name);
            if (!std::filesystem::exists(path))
                folder.Write(name, name);
            read = IdentityOfRealPath(path);
            return path;
        };
        terrain.LFilename = file("theater.L2", terrain.ReadL);
        terrain.OFilename = file("theater.O2", terrain.ReadO);
        for (const char* name : {"heights.elv", "other.elv"}) {
            FileIdentity read;
            const std::string path = file(name, read);
            HeightsOnDisk[path] = std::string(size_t{32} * Width * Width, '\0');
        }
        terrain.Elevations.Path = file("heights.elv", terrain.Elevations.Read);
        State->Catalogue.BinPath = file("Texture.bin", State->Catalogue.Read);
        State->MAPFile = file("theater.map", State->MAPFileRead);
        for (int set = 0; set < 3; ++set)
            AppendSet("M" + std::to_string(set) + "A.pcx");
        Disk = Copy();
    }

    void AppendSet(const std::string& name) {
        TileRecord tile;
        std::copy(name.begin(), name.end(), tile.TileName.begin());
        TileSet set;
        set.TileCount = 1;
        set.Terrain = 4;
        set.Tiles.push_back(tile);
        Catalogue& catalogue = State->Catalogue;
        catalogue.Bin.Sets.push_back(set);
        ++catalogue.Bin.NumSets;
        ++catalogue.Bin.NumTiles;
        catalogue.Lookup = LookupOf(catalogue.Bin, "/nowhere/");
    }

    WholePapers Copy() const {
        return {TextOfBytes(std::as_bytes(std::as_const(State->Terrain.LxArr).Values())),
                TextOfBytes(std::as_bytes(
                    std::as_const(State->Terrain.Elevations.L0ElvArr).Values())),
                TextOfBytes(BytesOf(State->Catalogue.Bin)),
                TextOfBytes(std::as_bytes(std::span(&State->MapFileRecord, 1)))};
    }

    // The papers become what copies hold, with no entry of the log.
    void Become(const WholePapers& papers) {
        const auto put = [](const std::string& text, auto values) {
            const auto to = std::as_writable_bytes(values);
            std::memcpy(to.data(), text.data(), to.size());
        };
        put(papers[0], State->Terrain.LxArr.Values());
        put(papers[1], State->Terrain.Elevations.L0ElvArr.Values());
        State->Catalogue.Bin =
            ParseBinFile(std::as_bytes(std::span(papers[2])), "Texture.bin");
        State->Catalogue.Lookup = LookupOf(State->Catalogue.Bin, "/nowhere/");
        put(papers[3], std::span(&State->MapFileRecord, 1));
    }

    int UpTo(int most) {
        return static_cast<int>(Random() % (static_cast<unsigned>(most) + 1));
    }

    std::vector<TileRun> PaintRuns() {
        const int32_t x = UpTo(20), y = UpTo(30), count = 1 + UpTo(10);
        std::vector<TileRun> runs;
        for (int32_t serial = y * Width + x + 1, i = 0; i < count; ++i, ++serial) {
            TerrainPost& post = State->Terrain.LxArr(serial);
            runs.push_back({serial, 1, post.TileOffset, UpTo(5)});
            post.TileOffset = runs.back().NewValue;
        }
        return runs;
    }

    void Paint(const std::string& name = "Paint") {
        Change change{.Name = name};
        change.Posts.Runs = PaintRuns();
        State->Changes.Add(change);
    }

    // The layer that a file of heights has.
    ElevationLayer LayerOf(const std::string& path) const {
        ElevationLayer layer;
        layer.Kind = ElevationKind::Elv;
        layer.EMapWidth = 4 * Width;
        layer.L0ElvArr = HeightArray(16 * Width * Width);
        const auto to = std::as_writable_bytes(layer.L0ElvArr.Values());
        std::memcpy(to.data(), HeightsOnDisk.at(path).data(), to.size());
        layer.Path = path;
        layer.Read = IdentityOfRealPath(path);
        return layer;
    }
    // As the program loads another file.
    void LoadHeights(const std::string& path) {
        {
            Recording made(State->Changes, {}, "Load " + path);
            ElevationLayer layer = LayerOf(path);
            std::swap(State->Terrain.Elevations, layer);
            made.Replaced(std::move(layer));
        }
        State->Changes.Saved(Paper::Heights);
    }
    // Paths, and hashes of the values, of the heights in force, those first that others
    // have taken the place of, which differ from a file that is as it was.
    std::vector<std::pair<std::string, size_t>> UnsavedHeights() const {
        std::vector<const ElevationLayer*> layers;
        for (size_t i = 0; i < State->Changes.Position(); ++i)
            if (const auto& other = State->Changes.At(i).OtherHeights)
                layers.push_back(&other->Layer);
        layers.push_back(&State->Terrain.Elevations);
        std::vector<std::pair<std::string, size_t>> unsaved;
        for (const ElevationLayer* layer : layers) {
            const std::string values =
                TextOfBytes(std::as_bytes(std::as_const(layer->L0ElvArr).Values()));
            if (values != HeightsOnDisk.at(layer->Path) &&
                layer->Read == IdentityOfRealPath(layer->Path))
                unsaved.emplace_back(layer->Path, std::hash<std::string>{}(values));
        }
        return unsaved;
    }

    void Save(Paper paper) {
        const auto index = static_cast<size_t>(paper);
        Disk[index] = Copy()[index];
        if (paper == Paper::Heights) {
            ElevationLayer& heights = State->Terrain.Elevations;
            HeightsOnDisk[heights.Path] = Disk[index];
            Spill(heights.Path, Slurp(heights.Path) + "+"); // another file
            heights.Read = IdentityOfRealPath(heights.Path);
            return State->Changes.Saved(paper);
        }
        FileIdentity* const read[] = {&State->Terrain.ReadL, nullptr,
                                      &State->Catalogue.Read, &State->MAPFileRead};
        ++read[index]->Inode; // another file
        State->Changes.Saved(paper);
    }

    void RunCommand() {
        RunOne();
        Disk[1] = HeightsOnDisk.at(State->Terrain.Elevations.Path);
    }

    void RunOne() {
        ChangeLog& changes = State->Changes;
        switch (UpTo(10)) {
        case 0:
        case 1:
            return Paint();
        case 2:
            Paint("Stroke");
            for (int i = UpTo(4); i > 0; --i)
                changes.Grow(PaintRuns(), "Stroke " + std::to_string(i));
            return;
        case 3: {
            const Recording made(changes, {Paper::Level2}, "Import");
            for (int i = 0; i < 40; ++i)
                State->Terrain.LxArr(1 + UpTo(1023)) =
                    TerrainPost{UpTo(40), static_cast<int16_t>(UpTo(900)),
                                static_cast<uint8_t>(UpTo(255)), 1, 2};
            return;
        }
        case 4: {
            const Recording made(changes, {Paper::Heights}, "Heights");
            for (int i = 0; i < 40; ++i)
                State->Terrain.Elevations.L0ElvArr(1 + UpTo(16 * 1024 - 1)) =
                    static_cast<int16_t>(UpTo(3000) - 500);
            return;
        }
        case 5: {
            const Recording made(changes, {Paper::Catalogue, Paper::Level2}, "Set");
            AppendSet("N" + std::to_string(UpTo(99)) + ".pcx");
            for (int i = 0; i < 10; ++i)
                State->Terrain.LxArr(1 + UpTo(1023)).TileOffset += 16;
            return;
        }
        case 6: {
            const Recording made(changes, {Paper::MapFile}, "Colour");
            State->MapFileRecord.Palette[UpTo(255)].Green =
                static_cast<uint8_t>(UpTo(255));
            return;
        }
        case 7: {
            const Recording made(changes, {Paper::Features}, "Load Cities.tdf");
            State->Features.Cities.emplace_back();
            return;
        }
        case 8:
            if (UpTo(3) == 0)
                Save(AllPapers.at(static_cast<size_t>(UpTo(3))));
            return;
        case 9:
            if (UpTo(2) == 0)
                LoadHeights(std::next(HeightsOnDisk.begin(), UpTo(1))->first);
            return;
        default:
            for (int steps = UpTo(6); steps > 0; --steps)
                if (UpTo(2) != 0 && changes.NextBack() != nullptr)
                    changes.Back();
                else if (changes.NextAgain() != nullptr)
                    changes.Again();
        }
    }

    std::unique_ptr<ProgramState> State;
    WholePapers Disk; // as the files would be, of the heights that are loaded
    std::map<std::string, std::string> HeightsOnDisk; // values by path
    std::mt19937 Random{7};
};

} // namespace vardenix::tests
