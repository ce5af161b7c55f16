#include "program/Change.h"

#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

std::vector<std::byte> Replaced(std::span<const std::byte> bytes, size_t offset,
                                const std::vector<std::byte>& from,
                                const std::vector<std::byte>& to) {
    if (offset > bytes.size() || from.size() > bytes.size() - offset ||
        !std::ranges::equal(bytes.subspan(offset, from.size()), from))
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "a change of " + std::to_string(from.size()) +
                               " bytes at offset " + std::to_string(offset) +
                               " was made of other bytes");
    std::vector<std::byte> result;
    result.reserve(bytes.size() - from.size() + to.size());
    const auto put = [&result](std::span<const std::byte> part) {
        result.insert(result.end(), part.begin(), part.end());
    };
    put(bytes.first(offset));
    put(to);
    put(bytes.subspan(offset + from.size()));
    return result;
}

} // namespace

ByteDelta ChangedBetween(std::span<const std::byte> before,
                         std::span<const std::byte> after) {
    const size_t shorter = std::min(before.size(), after.size());
    size_t front = 0;
    while (front < shorter && before[front] == after[front])
        ++front;
    size_t back = 0;
    while (back < shorter - front &&
           before[before.size() - 1 - back] == after[after.size() - 1 - back])
        ++back;
    const auto middle = [&](std::span<const std::byte> bytes) {
        const auto part = bytes.subspan(front, bytes.size() - front - back);
        return std::vector(part.begin(), part.end());
    };
    return {front, middle(before), middle(after)};
}

std::vector<std::byte> WithNew(std::span<const std::byte> bytes, const ByteDelta& delta) {
    return Replaced(bytes, delta.Offset, delta.Old, delta.New);
}

std::vector<std::byte> WithOld(std::span<const std::byte> bytes, const ByteDelta& delta) {
    return Replaced(bytes, delta.Offset, delta.New, delta.Old);
}

bool Change::Touches(Paper paper) const {
    if ((Away & PaperBit(paper)) != 0)
        return true;
    switch (paper) {
    case Paper::Level2:
        return !Posts.Empty();
    case Paper::Heights:
        return !Heights.Empty() || OtherHeights;
    case Paper::Catalogue:
        return !Catalogue.Empty();
    case Paper::MapFile:
        return !MapFile.Empty();
    case Paper::Features:
        break;
    }
    return Features.has_value();
}

bool Change::Empty() const {
    return !Pictures && std::ranges::none_of(
                            AllPapers, [this](Paper paper) { return Touches(paper); });
}

size_t Change::DeltaBytes() const {
    return Posts.Bytes() + Heights.Bytes() + Catalogue.Bytes() + MapFile.Bytes();
}

size_t Change::Bytes() const {
    return sizeof *this + Name.size() + DeltaBytes() +
           (Pictures ? Pictures->Bytes() : 0) +
           (OtherHeights ? OtherHeights->Layer.L0ElvArr.Values().size_bytes() : 0);
}

} // namespace vardenix
