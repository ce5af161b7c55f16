#include "recovery/EarlierSaves.h"

#include "files/Digest.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/FolderLock.h"
#include "files/OwnFolders.h"
#include "files/StagedFile.h"
#include "recovery/ChangeBytes.h"
#include "recovery/Restoring.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <functional>
#include <new>
#include <span>
#include <string_view>
#include <utility>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr const char* SaveTitle = "Vardenix earlier save 1";
constexpr size_t SumBytes = sizeof(uint32_t); // at the end of a file
constexpr std::string_view SaveEnding = ".save";

// The device's number does not count, as for logs of changes.
void AppendIdentity(std::vector<std::byte>& bytes, const FileIdentity& identity) {
    for (const uint64_t number : {identity.Inode, identity.Size})
        AppendInt64(bytes, static_cast<int64_t>(number));
    AppendInt64(bytes, identity.Seconds);
    AppendInt64(bytes, identity.Nanoseconds);
}

FileIdentity ReadIdentity(BinaryReader& reader) {
    FileIdentity identity{.Present = true};
    identity.Inode = static_cast<uint64_t>(ReadInt64(reader));
    identity.Size = static_cast<uint64_t>(ReadInt64(reader));
    identity.Seconds = ReadInt64(reader);
    identity.Nanoseconds = ReadInt64(reader);
    constexpr int64_t far = int64_t{1} << 33; // the year 2242
    if (identity.Seconds < 0 || identity.Seconds > far || identity.Nanoseconds < 0 ||
        identity.Nanoseconds > 999999999)
        throw RuntimeError(ErrorNumber::TypeMismatch, "a time that no clock shows");
    return identity;
}

bool SameButForDevice(FileIdentity one, const FileIdentity& other) {
    one.Device = other.Device;
    return one == other;
}

// What makes of a save the one before it.
struct KeptSave {
    std::string Path;
    FileIdentity Before;
    FileIdentity After;
    Change Back;
};

std::vector<std::byte> BytesOfSave(const KeptSave& save) {
    std::vector<std::byte> bytes;
    bytes.reserve(save.Back.Bytes() + 1024);
    AppendText(bytes, SaveTitle);
    AppendText(bytes, save.Path);
    AppendIdentity(bytes, save.Before);
    AppendIdentity(bytes, save.After);
    AppendChange(bytes, save.Back);
    const uint32_t sum = ChecksumOf(bytes);
    const auto end = std::as_bytes(std::span(&sum, 1));
    bytes.insert(bytes.end(), end.begin(), end.end());
    return bytes;
}

KeptSave ReadSave(const std::string& file) {
    const FileBytes bytes = ReadWholeFile(file, MostSavedBytes + 4096);
    uint32_t sum = 0;
    if (bytes.size() < SumBytes)
        throw RuntimeError(ErrorNumber::InputPastEnd, file);
    const auto body = bytes.Span().first(bytes.size() - SumBytes);
    std::memcpy(&sum, bytes.data() + body.size(), sizeof sum);
    if (ChecksumOf(body) != sum)
        throw RuntimeError(ErrorNumber::TypeMismatch, file + " is damaged");
    BinaryReader reader(body, file);
    if (ReadText(reader) != SaveTitle)
        throw RuntimeError(ErrorNumber::TypeMismatch, file + " is no earlier save");
    KeptSave save;
    save.Path = ReadText(reader);
    save.Before = ReadIdentity(reader);
    save.After = ReadIdentity(reader);
    save.Back = ReadChange(reader);
    return save;
}

// One for each theater, by the real path of its L2 file.
std::string TheaterFolder(const ProgramState& state, const std::string& folder) {
    const std::string& path = state.Terrain.LFilename;
    return folder + "/" + TextOf(DigestOf({std::as_bytes(std::span(path))}));
}

// "7-2.save": the paper 2, its seventh save or so.
struct SaveName {
    uint64_t Number = 0;
    Paper Of = Paper::Level2;
    std::string File; // with its folder
};

std::optional<SaveName> NameOf(const fs::path& folder, const std::string& name) {
    SaveName save;
    unsigned paper = 0;
    const char* end = name.data() + name.size();
    auto [dash, error] = std::from_chars(name.data(), end, save.Number);
    if (error != std::errc() || dash == end || *dash != '-')
        return std::nullopt;
    auto [rest, second] = std::from_chars(dash + 1, end, paper);
    if (second != std::errc() || std::string_view(rest, end) != SaveEnding ||
        paper >= static_cast<unsigned>(Paper::Features))
        return std::nullopt;
    save.Of = static_cast<Paper>(paper);
    save.File = TextOfPath(folder / name);
    return save;
}

// The newest first.
std::vector<SaveName> NamesOfSaves(const std::string& folder) {
    const fs::path path = PathAsItStands(folder);
    std::vector<SaveName> saves;
    for (const std::string& name : NamesIn(path).Names)
        if (auto save = NameOf(path, name))
            saves.push_back(std::move(*save));
    std::ranges::sort(saves, std::greater{}, &SaveName::Number);
    return saves;
}

// What is beyond the bounds goes, the oldest first.
void KeepWithinBounds(const std::string& folder) {
    std::array<size_t, AllPapers.size()> counts{};
    uint64_t bytes = 0;
    for (const SaveName& save : NamesOfSaves(folder)) {
        bytes += FileLength(save.File);
        if (++counts[static_cast<size_t>(save.Of)] > MostSaves || bytes > MostSavedBytes)
            DeleteFile(save.File);
    }
}

void WriteSave(const std::string& folder, Paper paper, const KeptSave& save) {
    if (save.Back.Bytes() > MostSavedBytes)
        return;
    MakeScratchFolder(UpToLastSlash(folder));
    KeepOwnTemporaryFolder(UpToLastSlash(folder));
    MakeScratchFolder(folder);
    const FolderLock lock(folder, FolderLock::Exclusive);
    const std::vector<SaveName> saves = NamesOfSaves(folder);
    const uint64_t number = saves.empty() ? 1 : saves.front().Number + 1;
    StagedFile file(folder + "/" + std::to_string(number) + "-" +
                    std::to_string(static_cast<unsigned>(paper)) +
                    std::string(SaveEnding));
    file.Write(BytesOfSave(save));
    file.Commit();
    KeepWithinBounds(folder);
}

// Walks back from the file on the disk; `take` says whether to go on.
template <typename Take>
void WalkSaves(const ProgramState& state, Paper paper, const std::string& folder,
               Take take) {
    const BasedOnFile now = FileOfPaper(state, paper);
    if (folder.empty() || now.Path.empty())
        return;
    FileIdentity identity = now.Identity;
    for (const SaveName& name : NamesOfSaves(TheaterFolder(state, folder))) {
        if (name.Of != paper)
            continue;
        const KeptSave save = ReadSave(name.File);
        if (save.Path != now.Path)
            continue;
        if (!SameButForDevice(save.After, identity) || !take(name, save))
            return;
        identity = save.Before;
    }
}

} // namespace

std::string SavesFolder() {
    const std::string data = UsersDataFolder();
    return data.empty() ? data : data + "/saves";
}

std::string NameOfPaper(Paper paper) {
    switch (paper) {
    case Paper::Level2:
        return "Level 2";
    case Paper::Heights:
        return "L0/ELV heights";
    case Paper::Catalogue:
        return "Texture.bin";
    case Paper::MapFile:
        return "theater.map";
    case Paper::Features:
        break;
    }
    return "features";
}

std::vector<EarlierSave> EarlierSavesOf(const ProgramState& state, Paper paper,
                                        const std::string& folder) {
    std::vector<EarlierSave> saves;
    try {
        WalkSaves(state, paper, folder, [&](const SaveName& name, const KeptSave& save) {
            saves.push_back(
                {.Paper = paper,
                 .Time = TimeOfMilliseconds(save.Before.Seconds * 1000 +
                                            save.Before.Nanoseconds / 1000000),
                 .Bytes = FileLength(name.File),
                 .File = name.File});
            return true;
        });
    } catch (const RuntimeError&) { // no farther than this
    }
    return saves;
}

void BringBack(ProgramState& state, Paper paper, size_t number,
               const std::string& folder) {
    PaperContent content = PaperFile(state, paper).Content(state);
    size_t passed = 0;
    Change found;
    WalkSaves(state, paper, folder, [&](const SaveName&, const KeptSave& save) {
        CarryOut(content, save.Back);
        if (passed++ < number)
            return true;
        found.Name = NameOfPaper(paper) + " as saved at " +
                     WhenOf(TimeOfMilliseconds(save.Before.Seconds * 1000),
                            std::chrono::system_clock::now());
        return false;
    });
    if (found.Name.empty())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "there is no earlier save " + std::to_string(number));
    Change change = ChangeInto(state, paper, content);
    if (change.Empty())
        throw RuntimeError(ErrorNumber::InvalidCall, found.Name + ": is what there is");
    change.Name = found.Name;
    state.Changes.Apply(std::move(change));
}

SaveKeeper::SaveKeeper(ProgramState& state, std::string folder)
    : state_(state), folder_(std::move(folder)) {
    state_.Changes.Follow(*this);
    if (!folder_.empty())
        for (const Paper paper : AllPapers)
            Hold(paper);
}

void SaveKeeper::Walked(const Change& change, Walk /*walk*/) {
    if (change.OtherHeights && !folder_.empty())
        Hold(Paper::Heights);
}

void SaveKeeper::Hold(Paper paper) {
    auto& held = held_[static_cast<size_t>(paper)];
    held.reset();
    try {
        held.emplace(state_, paper);
        if (!(held->Identity() == FileOfPaper(state_, paper).Identity))
            held.reset(); // another program has been there
    } catch (const RuntimeError&) {
        held.reset();
    }
}

void SaveKeeper::Saved(Paper paper) {
    if (folder_.empty() || paper == Paper::Features)
        return;
    try {
        Keep(paper);
    } catch (const RuntimeError&) { // a save is not worth less for it
    } catch (const std::bad_alloc&) {
    }
    Hold(paper);
}

void SaveKeeper::Keep(Paper paper) {
    const auto& held = held_[static_cast<size_t>(paper)];
    const BasedOnFile now = FileOfPaper(state_, paper);
    if (!held || held->Path() != now.Path || held->Identity() == now.Identity)
        return;
    KeptSave save{.Path = now.Path,
                  .Before = held->Identity(),
                  .After = now.Identity,
                  .Back = ChangeInto(state_, paper, held->Content(state_))};
    save.Back.Name = NameOfPaper(paper);
    WriteSave(TheaterFolder(state_, folder_), paper, save);
}

} // namespace vardenix
