#pragma once

#include "files/BinaryReader.h"
#include "files/FileIdentity.h"
#include "levels/Terrain.h"
#include "program/Change.h"
#include "program/ProgramState.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// A log of changes is a file of records (GrowingFile.h). Each begins with its kind, the
// papers that are unsaved after it (PaperBit) and its time; the first is of kind Files.
enum class RecordKind : uint8_t {
    Files = 1, // the theater that all is based on
    Added,     // a change follows
    Grown,     // what the newest change has got more follows, as a change
    Back,
    Again,
    Saved, // the paper, and the files as they are from then on
    Revised,
    Lost,
    OtherHeights // a change as of Added: those of the files that follow are in use
};

// Real paths of a theater, and which files they were when they were read or last saved.
struct BasedOnFile {
    std::string Path;
    FileIdentity Identity;
    bool operator==(const BasedOnFile&) const = default;
};
struct HeightsFiles {
    ElevationKind Kind = ElevationKind::None;
    BasedOnFile L; // or the .elv file
    BasedOnFile O; // of a L0 file
};
struct BasedOn {
    BasedOnFile L2;
    BasedOnFile O2;
    BasedOnFile Bin;
    BasedOnFile Map;
    HeightsFiles Heights;
};
BasedOn FilesOf(const ProgramState& state);
HeightsFiles FilesOf(const ElevationLayer& layer);
// That of a paper; the L file of a pair.
const BasedOnFile& FileOf(const BasedOn& files, Paper paper);

// Whether a file is there as it was. The number of its disk does not count: it need not
// be the same after the machine was started anew.
bool IsThere(const BasedOnFile& file);
// The first of them that is not; null where all are.
const BasedOnFile* FirstGone(const HeightsFiles& files);

struct LogRecord {
    RecordKind Kind = RecordKind::Lost;
    uint8_t Unsaved = 0;
    std::chrono::system_clock::time_point Time{};
    uint8_t Saved = 0;  // of a record of that kind: PaperBit
    BasedOn Files{};    // of Files, Saved and OtherHeights
    std::string Name{}; // of the change of Added, Grown and OtherHeights, as what follows
    uint8_t Papers = 0;
    size_t ChangeAt = 0; // in the bytes of the whole file
};

// Of kinds Added, Grown and OtherHeights with their change, of others with none.
std::vector<std::byte> BytesOfRecord(const LogRecord& record,
                                     const Change* change = nullptr);

// The change of a record of these kinds, by the bytes of the record alone. Errors 9, 13
// and 62 where they are none.
Change ChangeOfRecord(std::span<const std::byte> body, const std::string& path);

// Takes the records of a file apart, one after the other; the change of each is looked
// over, but not made.
class LogReader {
public:
    // The bytes are borrowed and may be anybody's.
    LogReader(std::span<const std::byte> bytes, std::string path)
        : bytes_(bytes), path_(std::move(path)) {}

    // False at the end of what is whole: behind it the file ends or is damaged.
    bool Next(LogRecord& record);
    // Bytes that were whole so far.
    size_t Position() const { return position_; }

private:
    std::span<const std::byte> bytes_;
    std::string path_;
    size_t position_ = 0;
};

} // namespace vardenix
