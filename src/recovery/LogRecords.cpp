#include "recovery/LogRecords.h"

#include "files/FileStatus.h"
#include "files/GrowingFile.h"
#include "files/StagedFile.h"
#include "recovery/ChangeBytes.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace vardenix {

namespace {

constexpr const char* LogTitle = "Vardenix log of changes 1";

void AppendFile(std::vector<std::byte>& bytes, const BasedOnFile& file) {
    AppendText(bytes, file.Path);
    bytes.push_back(static_cast<std::byte>(file.Identity.Present));
    for (const uint64_t number :
         {file.Identity.Device, file.Identity.Inode, file.Identity.Size})
        AppendInt64(bytes, static_cast<int64_t>(number));
    AppendInt64(bytes, file.Identity.Seconds);
    AppendInt64(bytes, file.Identity.Nanoseconds);
}

BasedOnFile ReadFileOf(BinaryReader& reader) {
    BasedOnFile file;
    file.Path = ReadText(reader);
    file.Identity.Present = reader.Byte() != 0;
    for (uint64_t* number :
         {&file.Identity.Device, &file.Identity.Inode, &file.Identity.Size})
        *number = static_cast<uint64_t>(ReadInt64(reader));
    file.Identity.Seconds = ReadInt64(reader);
    file.Identity.Nanoseconds = ReadInt64(reader);
    return file;
}

void AppendFiles(std::vector<std::byte>& bytes, const BasedOn& files) {
    AppendText(bytes, LogTitle);
    for (const BasedOnFile* file : {&files.L2, &files.O2, &files.Bin, &files.Map})
        AppendFile(bytes, *file);
    bytes.push_back(static_cast<std::byte>(files.Heights.Kind));
    AppendFile(bytes, files.Heights.L);
    AppendFile(bytes, files.Heights.O);
}

[[noreturn]] void Unknown(const std::string& what) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange, "a log of changes with " + what);
}

BasedOn ReadFiles(BinaryReader& reader) {
    BasedOn files;
    if (ReadText(reader) != LogTitle)
        Unknown("another title");
    for (BasedOnFile* file : {&files.L2, &files.O2, &files.Bin, &files.Map})
        *file = ReadFileOf(reader);
    const uint8_t kind = reader.Byte();
    if (kind > static_cast<uint8_t>(ElevationKind::Elv))
        Unknown("heights of an unknown kind");
    files.Heights.Kind = static_cast<ElevationKind>(kind);
    files.Heights.L = ReadFileOf(reader);
    files.Heights.O = ReadFileOf(reader);
    return files;
}

bool HasChange(RecordKind kind) {
    return kind == RecordKind::Added || kind == RecordKind::Grown ||
           kind == RecordKind::OtherHeights;
}
bool HasFiles(RecordKind kind) {
    return kind == RecordKind::Files || kind == RecordKind::Saved ||
           kind == RecordKind::OtherHeights;
}

void TakeApart(BinaryReader& reader, size_t at, LogRecord& record) {
    const uint8_t kind = reader.Byte();
    if (kind < static_cast<uint8_t>(RecordKind::Files) ||
        kind > static_cast<uint8_t>(RecordKind::OtherHeights))
        Unknown("a record of an unknown kind");
    record = {.Kind = static_cast<RecordKind>(kind)};
    record.Unsaved = reader.Byte();
    record.Time = TimeOfMilliseconds(ReadInt64(reader));
    if (record.Kind == RecordKind::Saved)
        record.Saved = reader.Byte();
    if (HasFiles(record.Kind))
        record.Files = ReadFiles(reader);
    if (HasChange(record.Kind)) {
        record.ChangeAt = at + reader.Position();
        ChangeHead head = ReadChangeHead(reader);
        record.Name = std::move(head.Name);
        record.Papers = head.Papers;
    }
    if (reader.Remaining() != 0)
        Unknown("more than a record behind a record");
}

} // namespace

BasedOn FilesOf(const ProgramState& state) {
    const Terrain& terrain = state.Terrain;
    return {.L2 = {terrain.LFilename, terrain.ReadL},
            .O2 = {terrain.OFilename, terrain.ReadO},
            .Bin = {state.Catalogue.BinPath, state.Catalogue.Read},
            .Map = {state.MAPFile, state.MAPFileRead},
            .Heights = FilesOf(terrain.Elevations)};
}

HeightsFiles FilesOf(const ElevationLayer& layer) {
    return {layer.Kind, {layer.Path, layer.Read}, {layer.OffsetPath, layer.ReadO}};
}

const BasedOnFile& FileOf(const BasedOn& files, Paper paper) {
    static const BasedOnFile none;
    switch (paper) {
    case Paper::Level2:
        return files.L2;
    case Paper::Heights:
        return files.Heights.L;
    case Paper::Catalogue:
        return files.Bin;
    case Paper::MapFile:
        return files.Map;
    case Paper::Features:
        break;
    }
    return none;
}

bool IsThere(const BasedOnFile& file) {
    FileIdentity now = IdentityOfRealPath(file.Path);
    now.Device = file.Identity.Device;
    return now == file.Identity;
}

const BasedOnFile* FirstGone(const HeightsFiles& files) {
    if (!IsThere(files.L))
        return &files.L;
    return files.Kind == ElevationKind::L0 && !IsThere(files.O) ? &files.O : nullptr;
}

std::vector<std::byte> BytesOfRecord(const LogRecord& record, const Change* change) {
    std::vector<std::byte> bytes;
    if (change != nullptr)
        bytes.reserve(change->DeltaBytes() + change->Name.size() + 1024);
    bytes.push_back(static_cast<std::byte>(record.Kind));
    bytes.push_back(static_cast<std::byte>(record.Unsaved));
    AppendInt64(bytes, MillisecondsOf(record.Time));
    if (record.Kind == RecordKind::Saved)
        bytes.push_back(static_cast<std::byte>(record.Saved));
    if (HasFiles(record.Kind))
        AppendFiles(bytes, record.Files);
    if (change != nullptr)
        AppendChange(bytes, *change);
    return bytes;
}

Change ChangeOfRecord(std::span<const std::byte> body, const std::string& path) {
    LogRecord record;
    BinaryReader head(body, path);
    TakeApart(head, 0, record);
    if (!HasChange(record.Kind))
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           path + ": a record without a change");
    BinaryReader reader(body.subspan(record.ChangeAt), path);
    return ReadChange(reader);
}

bool LogReader::Next(LogRecord& record) {
    uint32_t head[2]{};
    const auto rest = bytes_.subspan(position_);
    if (rest.size() < sizeof head)
        return false;
    std::memcpy(head, rest.data(), sizeof head);
    if (head[0] > rest.size() - sizeof head)
        return false;
    const auto body = rest.subspan(sizeof head, head[0]);
    if (ChecksumOf(body) != head[1])
        return false;
    try {
        BinaryReader reader(body, path_);
        TakeApart(reader, position_ + sizeof head, record);
    } catch (const RuntimeError&) {
        return false;
    }
    position_ += sizeof head + body.size();
    return true;
}

} // namespace vardenix
