#include "recovery/ChangeBytes.h"

#include "texts/RuntimeError.h"

#include <cstring>
#include <span>

namespace vardenix {

namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::system_clock;

static_assert(sizeof(TileRun) == 16 && sizeof(HeightRun) == 12 &&
                  sizeof(ChangedValues<int16_t>::Stretch) == 8,
              "these are written as they stand, without gaps");

void AppendBytes(std::vector<std::byte>& bytes, std::span<const std::byte> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

template <typename Value>
void AppendArray(std::vector<std::byte>& bytes, const std::vector<Value>& values) {
    AppendInt64(bytes, static_cast<int64_t>(values.size()));
    AppendBytes(bytes, std::as_bytes(std::span(values)));
}

template <typename Value>
std::vector<Value> ReadArray(BinaryReader& reader, const char* what) {
    const int64_t count = ReadInt64(reader);
    reader.RequireRecords(count, sizeof(Value), what);
    std::vector<Value> values(static_cast<size_t>(count));
    const auto from = reader.Bytes(values.size() * sizeof(Value));
    if (!from.empty())
        std::memcpy(values.data(), from.data(), from.size());
    return values;
}

void SkipArray(BinaryReader& reader, size_t size, const char* what) {
    const int64_t count = ReadInt64(reader);
    reader.RequireRecords(count, size, what);
    reader.Bytes(static_cast<size_t>(count) * size);
}

template <typename Delta>
void AppendDelta(std::vector<std::byte>& bytes, const Delta& delta) {
    AppendArray(bytes, delta.Runs);
    AppendArray(bytes, delta.Values.Stretches);
    AppendArray(bytes, delta.Values.Old);
    AppendArray(bytes, delta.Values.New);
}

[[noreturn]] void Contradicts(const std::string& what) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange, "a change that has " + what);
}

template <typename Delta>
Delta ReadDelta(BinaryReader& reader) {
    Delta delta;
    using Run = typename decltype(delta.Runs)::value_type;
    using Stretch = typename decltype(delta.Values.Stretches)::value_type;
    using Value = typename decltype(delta.Values.Old)::value_type;
    delta.Runs = ReadArray<Run>(reader, "runs");
    delta.Values.Stretches = ReadArray<Stretch>(reader, "stretches");
    delta.Values.Old = ReadArray<Value>(reader, "values");
    delta.Values.New = ReadArray<Value>(reader, "values");
    uint64_t count = 0;
    for (const Stretch& stretch : delta.Values.Stretches) {
        if (stretch.Count < 0)
            Contradicts("a stretch of less than nothing");
        count += static_cast<uint64_t>(stretch.Count);
    }
    if (count != delta.Values.Old.size() || count != delta.Values.New.size())
        Contradicts("more or fewer values than its stretches");
    return delta;
}

template <typename Delta>
void SkipDelta(BinaryReader& reader) {
    const Delta shape;
    SkipArray(reader, sizeof(shape.Runs[0]), "runs");
    SkipArray(reader, sizeof(shape.Values.Stretches[0]), "stretches");
    SkipArray(reader, sizeof(shape.Values.Old[0]), "values");
    SkipArray(reader, sizeof(shape.Values.Old[0]), "values");
}

void AppendByteDelta(std::vector<std::byte>& bytes, const ByteDelta& delta) {
    AppendInt64(bytes, static_cast<int64_t>(delta.Offset));
    AppendArray(bytes, delta.Old);
    AppendArray(bytes, delta.New);
}

ByteDelta ReadByteDelta(BinaryReader& reader) {
    ByteDelta delta;
    delta.Offset = static_cast<size_t>(ReadInt64(reader));
    delta.Old = ReadArray<std::byte>(reader, "bytes");
    delta.New = ReadArray<std::byte>(reader, "bytes");
    return delta;
}

void SkipByteDelta(BinaryReader& reader) {
    ReadInt64(reader);
    SkipArray(reader, 1, "bytes");
    SkipArray(reader, 1, "bytes");
}

void RequireInside(int64_t serial, int64_t count, int32_t upper) {
    if (serial < 1 || count < 0 || serial + count - 1 > upper)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "a change of " + std::to_string(count) +
                               " values from serial " + std::to_string(serial) + " of " +
                               std::to_string(upper));
}

template <typename Delta>
void RequireDeltaFits(const Delta& delta, int32_t upper) {
    for (const auto& run : delta.Runs)
        RequireInside(run.Serial, run.Count, upper);
    for (const auto& stretch : delta.Values.Stretches)
        RequireInside(stretch.Serial, stretch.Count, upper);
}

} // namespace

void AppendInt64(std::vector<std::byte>& bytes, int64_t value) {
    AppendBytes(bytes, std::as_bytes(std::span(&value, 1)));
}

int64_t ReadInt64(BinaryReader& reader) {
    int64_t value = 0;
    std::memcpy(&value, reader.Bytes(sizeof value).data(), sizeof value);
    return value;
}

void AppendText(std::vector<std::byte>& bytes, const std::string& text) {
    AppendInt64(bytes, static_cast<int64_t>(text.size()));
    AppendBytes(bytes, std::as_bytes(std::span(text)));
}

std::string ReadText(BinaryReader& reader) {
    const int64_t length = ReadInt64(reader);
    reader.RequireRecords(length, 1, "letters");
    std::string text(static_cast<size_t>(length), '\0');
    const auto from = reader.Bytes(text.size());
    if (!from.empty())
        std::memcpy(text.data(), from.data(), from.size());
    return text;
}

uint8_t PapersOf(const Change& change) {
    uint8_t papers = 0;
    for (const Paper paper : AllPapers)
        if (paper != Paper::Features && change.Touches(paper))
            papers |= PaperBit(paper);
    return papers;
}

void AppendChange(std::vector<std::byte>& bytes, const Change& change) {
    const uint8_t papers = PapersOf(change);
    AppendText(bytes, change.Name);
    AppendInt64(bytes, MillisecondsOf(change.Time));
    bytes.push_back(static_cast<std::byte>(papers));
    if ((papers & PaperBit(Paper::Level2)) != 0)
        AppendDelta(bytes, change.Posts);
    if ((papers & PaperBit(Paper::Heights)) != 0)
        AppendDelta(bytes, change.Heights);
    if ((papers & PaperBit(Paper::Catalogue)) != 0)
        AppendByteDelta(bytes, change.Catalogue);
    if ((papers & PaperBit(Paper::MapFile)) != 0)
        AppendByteDelta(bytes, change.MapFile);
}

int64_t MillisecondsOf(system_clock::time_point time) {
    return duration_cast<milliseconds>(time.time_since_epoch()).count();
}

system_clock::time_point TimeOfMilliseconds(int64_t count) {
    constexpr int64_t far = int64_t{1} << 43; // the year 2248
    return system_clock::time_point(milliseconds(count < 0 || count > far ? 0 : count));
}

namespace {

ChangeHead ReadHeadAlone(BinaryReader& reader) {
    ChangeHead head;
    head.Name = ReadText(reader);
    head.Time = TimeOfMilliseconds(ReadInt64(reader));
    head.Papers = reader.Byte();
    if (head.Papers >= PaperBit(Paper::Features))
        Contradicts("papers that nobody knows");
    return head;
}

} // namespace

Change ReadChange(BinaryReader& reader) {
    ChangeHead head = ReadHeadAlone(reader);
    Change change{.Name = std::move(head.Name), .Time = head.Time};
    if ((head.Papers & PaperBit(Paper::Level2)) != 0)
        change.Posts = ReadDelta<PostDelta>(reader);
    if ((head.Papers & PaperBit(Paper::Heights)) != 0)
        change.Heights = ReadDelta<HeightDelta>(reader);
    if ((head.Papers & PaperBit(Paper::Catalogue)) != 0)
        change.Catalogue = ReadByteDelta(reader);
    if ((head.Papers & PaperBit(Paper::MapFile)) != 0)
        change.MapFile = ReadByteDelta(reader);
    return change;
}

ChangeHead ReadChangeHead(BinaryReader& reader) {
    ChangeHead head = ReadHeadAlone(reader);
    if ((head.Papers & PaperBit(Paper::Level2)) != 0)
        SkipDelta<PostDelta>(reader);
    if ((head.Papers & PaperBit(Paper::Heights)) != 0)
        SkipDelta<HeightDelta>(reader);
    if ((head.Papers & PaperBit(Paper::Catalogue)) != 0)
        SkipByteDelta(reader);
    if ((head.Papers & PaperBit(Paper::MapFile)) != 0)
        SkipByteDelta(reader);
    return head;
}

void RequireFits(const Change& change, int32_t posts, int32_t heights) {
    RequireDeltaFits(change.Posts, posts);
    RequireDeltaFits(change.Heights, heights);
}

} // namespace vardenix
