#include "levels/PostDelta.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace vardenix {

namespace {

// Compared in one go; most of an array is as it was.
constexpr size_t Chunk = 256;

template <typename Value>
bool Alike(const Value* a, const Value* b, size_t count) {
    return std::memcmp(a, b, count * sizeof(Value)) == 0;
}

template <typename Value>
size_t SkipAlike(std::span<const Value> a, std::span<const Value> b, size_t at) {
    while (at < a.size()) {
        const size_t count = std::min(Chunk, a.size() - at);
        if (!Alike(&a[at], &b[at], count))
            break;
        at += count;
    }
    while (at < a.size() && Alike(&a[at], &b[at], 1))
        ++at;
    return at;
}

template <typename Value>
ChangedValues<Value> Between(std::span<const Value> before, std::span<const Value> after,
                             int32_t first) {
    ChangedValues<Value> changed;
    for (size_t at = SkipAlike(before, after, 0); at < before.size();
         at = SkipAlike(before, after, at)) {
        size_t end = at + 1;
        while (end < before.size() && !Alike(&before[end], &after[end], 1))
            ++end;
        changed.Stretches.push_back(
            {first + static_cast<int32_t>(at), static_cast<int32_t>(end - at)});
        changed.Old.insert(changed.Old.end(), &before[at], &before[at] + (end - at));
        changed.New.insert(changed.New.end(), &after[at], &after[at] + (end - at));
        at = end;
    }
    return changed;
}

template <typename Value>
void Write(SerialArray<Value>& array, const ChangedValues<Value>& changed,
           const std::vector<Value>& values) {
    const auto all = array.Values();
    size_t from = 0;
    for (const auto& [serial, count] : changed.Stretches) {
        if (serial < 1 || count < 0 || count > array.UpperBound() - serial + 1)
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                               "a change of " + std::to_string(count) +
                                   " values from serial " + std::to_string(serial));
        const auto length = static_cast<size_t>(count);
        std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(from), length,
                    all.begin() + (serial - 1));
        from += length;
    }
}

} // namespace

void DeltaWriter::AddStretch(int32_t serial, std::span<const TerrainPost> old,
                             std::span<const TerrainPost> changed) {
    auto& [stretches, before, after] = delta_.Values;
    const auto count = static_cast<int32_t>(old.size());
    if (!stretches.empty() && stretches.back().Serial + stretches.back().Count == serial)
        stretches.back().Count += count;
    else
        stretches.push_back({serial, count});
    before.insert(before.end(), old.begin(), old.end());
    after.insert(after.end(), changed.begin(), changed.end());
}

void DeltaWriter::Reserve(size_t posts) {
    delta_.Values.Old.reserve(posts);
    delta_.Values.New.reserve(posts);
}

ChangedValues<TerrainPost> ChangedBetween(std::span<const TerrainPost> before,
                                          std::span<const TerrainPost> after,
                                          int32_t first) {
    return Between(before, after, first);
}

ChangedValues<int16_t> ChangedBetween(std::span<const int16_t> before,
                                      std::span<const int16_t> after, int32_t first) {
    return Between(before, after, first);
}

void WriteNew(PostArray& posts, const PostDelta& delta) {
    Write(posts, delta.Values, delta.Values.New);
    WriteNew(posts, delta.Runs);
}

void WriteOld(PostArray& posts, const PostDelta& delta) {
    WriteOld(posts, delta.Runs);
    Write(posts, delta.Values, delta.Values.Old);
}

void WriteNew(HeightArray& heights, const HeightDelta& delta) {
    Write(heights, delta.Values, delta.Values.New);
    WriteNew(heights, delta.Runs);
}

void WriteOld(HeightArray& heights, const HeightDelta& delta) {
    WriteOld(heights, delta.Runs);
    Write(heights, delta.Values, delta.Values.Old);
}

} // namespace vardenix
