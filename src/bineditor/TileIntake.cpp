#include "bineditor/TileIntake.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/PictureGuard.h"
#include "platform/ForEachInParallel.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <utility>

namespace vardenix {

namespace {

constexpr uint32_t BlackNight = 0;

std::string TargaOf(const IntakePlace& place, const std::string& pictureName) {
    return place.TempFolder + WithoutExtension(pictureName) + ".tga";
}

// What an intake leaves in TempFolder goes with it, however it ends.
class ScratchPictures {
public:
    explicit ScratchPictures(const std::vector<TileFamily>& families)
        : families_(families) {}
    ScratchPictures(const ScratchPictures&) = delete;
    ScratchPictures& operator=(const ScratchPictures&) = delete;
    ~ScratchPictures() {
        for (const TileFamily& family : families_)
            for (const ConversionJob& job : family.Jobs)
                Remove(job.SourceFile);
    }

private:
    static void Remove(const std::string& path) {
        try {
            if (FileExists(path))
                DeleteFile(path);
        } catch (const RuntimeError&) { // NOLINT(bugprone-empty-catch)
            // The whole folder goes at the end of the program.
        }
    }

    const std::vector<TileFamily>& families_;
};

// Adds the Targa file of one size, or of the bitmap's own for a side of 0, and its job.
void AddSize(TileFamily& family, const Bitmap& picture, const std::string& pictureName,
             int32_t side, const IntakePlace& place) {
    const std::string targa = TargaOf(place, pictureName);
    family.Jobs.push_back({targa, place.DDSFolder + pictureName});
    ImageSaveOptions options;
    options.Format = PictureFormat::Targa;
    options.Scratch = true;
    if (side > 0)
        options.Size = {side, side};
    ImageSaveEx(picture, targa, options);
}

Bitmap ReadDds(const std::string& path) {
    if (!FileExists(path))
        throw RuntimeError(ErrorNumber::FileNotFound, "reading " + path);
    return ImageLoadEx(path);
}

// A chosen file, by its folder with a slash at its end and its name there.
struct ChosenFile {
    explicit ChosenFile(const std::string& path)
        : Folder(UpToLastSlash(path)), Name(AfterLastSlash(path)) {}

    std::string Folder;
    std::string Name;
};

// A file comes into the folder once. Two chosen pictures that would become the same one
// are told before either is lost.
void RequireApart(const std::vector<ChosenFile>& chosen) {
    struct Origin {
        std::string Name;
        std::string Source;
    };
    std::map<std::string, Origin> byTarget;
    const auto add = [&](const std::string& target, const std::string& name,
                         const std::string& source) {
        const auto [place, isNew] =
            byTarget.try_emplace(UpperCase(target), Origin{name, source});
        if (!isNew && place->second.Source != source)
            throw RuntimeError(ErrorNumber::BadFileName,
                               place->second.Name + " and " + name +
                                   " would both become " + target +
                                   "; choose only one of them");
    };
    for (const ChosenFile& file : chosen) {
        const FamilyNames family = FamilyOf(file.Name);
        const std::string day = UpperCase(file.Folder + file.Name);
        const std::string nightFile = file.Folder + family.NightSource;
        const std::string night =
            FileExists(nightFile) ? UpperCase(nightFile) : "the night of " + day;
        for (const std::string& target : {family.HDay, family.MDay, family.LDay})
            add(target, file.Name, day);
        for (const std::string& target : {family.HNight, family.MNight, family.LNight})
            add(target, file.Name, night);
    }
}

void RequireTileName(const std::string& name) {
    if (name.empty() || name.find_first_of("/\\") != std::string::npos ||
        name.find("..") != std::string::npos)
        throw RuntimeError(ErrorNumber::BadFileName,
                           "a tile cannot be called \"" + name +
                               "\": a slash or \"..\" would lead out of the folder of "
                               "tile pictures");
    if (Utf8FromBytes(BytesFromUtf8(name)) != name)
        throw RuntimeError(ErrorNumber::BadFileName,
                           "a tile cannot be called \"" + name +
                               "\": the catalogue has no such letter; rename the file");
}

void CopyInto(StagedFile& target, const std::string& sourceFile) {
    target.Write(ReadWholeFile(sourceFile, PictureLargestFile).Span());
}

// Every family's files, staged in order. A picture that lies at its target already stays
// as it is, and what two families share comes in once.
class StagedFamilies {
public:
    StagedFamilies(const IntakePlace& place, Transaction& files)
        : tools_(place.AppPath, place.TempFolder), files_(files) {}

    bool Stage(const std::vector<TileFamily>& families,
               const std::function<bool()>& stop) {
        ConversionQueue queue;
        for (const TileFamily& family : families) {
            for (const PictureCopy& copy : family.Copies)
                if (IsNew(copy.TargetFile) && !SameFile(copy.SourceFile, copy.TargetFile))
                    CopyInto(files_.Stage(copy.TargetFile), copy.SourceFile);
            for (const ConversionJob& job : family.Jobs)
                if (IsNew(job.TargetFile))
                    queue.push_back(job);
        }
        return RunConversionQueue(tools_, queue, files_, stop);
    }

private:
    bool IsNew(const std::string& target) {
        return targets_.try_emplace(UpperCase(target), true).second;
    }

    ToolRunner tools_;
    Transaction& files_;
    std::map<std::string, bool> targets_;
};

} // namespace

bool NameOfDds(const std::string& name) {
    return FormatFromFileName(name) == PictureFormat::Dds;
}

std::string NotAnImage(const std::string& name) {
    return "The image " + name + " you tried to load doesn't seem to be a valid image";
}

IntakePlace IntakePlaceOf(const std::string& ddsFolder, const ProgramFolders& folders,
                          const Configuration& settings) {
    const auto side = [](int16_t pixels) {
        return std::clamp<int32_t>(pixels, 1, PictureLargestSide);
    };
    return {.DDSFolder = ddsFolder,
            .TempFolder = folders.TempFolder,
            .AppPath = folders.AppPath,
            .MTile = side(settings.MTile),
            .LTile = side(settings.LTile)};
}

void MakeTileFamily(const std::string& sourceFolder, const std::string& chosenName,
                    const IntakePlace& place, TileFamily& family) {
    RequireTileName(chosenName);
    const FamilyNames names = FamilyOf(chosenName);
    const std::string daySource = sourceFolder + chosenName;
    const Bitmap day = ReadDds(daySource);
    family.Copies.push_back({daySource, place.DDSFolder + names.HDay});
    AddSize(family, day, names.MDay, place.MTile, place);
    AddSize(family, day, names.LDay, place.LTile, place);

    const std::string nightSource = sourceFolder + names.NightSource;
    Bitmap night;
    if (FileExists(nightSource)) {
        night = ReadDds(nightSource);
        family.Copies.push_back({nightSource, place.DDSFolder + names.HNight});
    } else {
        night = AllocateEx(day.Width(), day.Width(), BlackNight);
        AddSize(family, night, names.HNight, 0, place);
    }
    AddSize(family, night, names.MNight, place.MTile, place);
    AddSize(family, night, names.LNight, place.LTile, place);
}

std::vector<std::string> TargetsOf(const std::vector<std::string>& chosen,
                                   const std::string& ddsFolder) {
    std::vector<std::string> targets;
    for (const std::string& file : chosen) {
        const FamilyNames names = FamilyOf(AfterLastSlash(file));
        for (const std::string& name : {names.HDay, names.HNight, names.MDay, names.LDay,
                                        names.MNight, names.LNight})
            targets.push_back(ddsFolder + name);
    }
    return targets;
}

bool TakeInPictures(const std::vector<std::string>& chosen, const IntakePlace& place,
                    Progress& progress, const std::function<bool()>& stop) {
    Transaction files;
    if (!StagePictures(chosen, place, files, progress, stop))
        return false;
    files.Commit();
    return true;
}

bool StagePictures(const std::vector<std::string>& chosen, const IntakePlace& place,
                   Transaction& staged, Progress& progress,
                   const std::function<bool()>& stop) {
    if (chosen.empty())
        return true;
    const std::vector<ChosenFile> files(chosen.begin(), chosen.end());
    for (const ChosenFile& file : files)
        RequireTileName(file.Name);
    RequireApart(files);

    std::vector<TileFamily> families(chosen.size());
    const ScratchPictures scratch(families);
    std::atomic<size_t> begun = 0;
    const auto tell = [&] {
        const size_t at = begun == 0 ? 0 : begun - 1;
        progress.SetText(files[at].Name);
        progress.SetBar(ToInt32(static_cast<double>(begun) * 25 /
                                static_cast<double>(chosen.size())));
        progress.LetEventsThrough();
        return stop && stop();
    };
    const auto take = [&](size_t i) {
        ++begun;
        MakeTileFamily(files[i].Folder, files[i].Name, place, families[i]);
    };
    return ForEachInParallel(chosen.size(), take, tell) &&
           StagedFamilies(place, staged).Stage(families, stop);
}

} // namespace vardenix
