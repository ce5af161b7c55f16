#include "builder/OldFartiles.h"

#include "levels/RebuiltFiles.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace vardenix {

namespace {

// A key is as good as any random number.
size_t PlaceOf(const Digest& key, size_t places) {
    uint64_t number = 0;
    std::memcpy(&number, key.data(), sizeof number);
    return static_cast<size_t>(number) & (places - 1);
}

bool BeginsAs(const ReadableFile& file, const FartileShape& shape) {
    const auto expected = shape.Header();
    std::array<uint8_t, FartileShape::HeaderBytes> header{};
    return file.ReadAt(0, std::as_writable_bytes(std::span(header))) == header.size() &&
           header == expected;
}

} // namespace

std::unique_ptr<const OldFartiles> OldFartiles::Trusted(const std::string& textureFolder,
                                                        const FartileShape& shape) {
    try {
        const ReadableFile file(IndexOfFartiles(textureFolder));
        if (file.Size() > BytesOfIndex(MostFartilesOfIndex, MostPicturesOfIndex))
            return nullptr;
        auto index = ParseFartileIndex(file.ReadAll().Span());
        if (!index)
            return nullptr;
        auto old = std::make_unique<OldFartiles>(textureFolder, std::move(*index));
        if (!old->Fit(file.Mark(), shape))
            return nullptr;
        old->MakePlaces();
        return old;
    } catch (const RuntimeError&) {
        return nullptr; // far tiles can always be made anew
    }
}

OldFartiles::OldFartiles(const std::string& textureFolder, FartileIndex index)
    : index_(std::move(index)), containers_{ReadableFile(DayContainer(textureFolder)),
                                            ReadableFile(NightContainer(textureFolder))} {
}

// The index is the last of the three to take its place: a container that was changed no
// later has not been changed since.
bool OldFartiles::Fit(const FileMark& index, const FartileShape& shape) const {
    for (size_t i = 0; i < containers_.size(); ++i) {
        const ReadableFile& container = containers_[i];
        if (container.Identity() != index_.Containers[i] ||
            !container.Mark().ChangedNoLaterThan(index) ||
            container.Size() !=
                FartileShape::HeaderBytes + index_.Keys.size() * shape.LinearSize() ||
            !BeginsAs(container, shape))
            return false;
    }
    return true;
}

void OldFartiles::MakePlaces() {
    places_.assign(std::bit_ceil(2 * index_.Keys.size() + 1), None);
    for (int32_t fartile = 0; fartile < Count(); ++fartile) {
        size_t place = PlaceOf(index_.Keys[static_cast<size_t>(fartile)], places_.size());
        while (places_[place] != None)
            place = (place + 1) & (places_.size() - 1);
        places_[place] = fartile;
    }
}

int32_t OldFartiles::Find(const Digest& key, int32_t likely) const {
    if (likely >= 0 && likely < Count() &&
        index_.Keys[static_cast<size_t>(likely)] == key)
        return likely;
    size_t place = PlaceOf(key, places_.size());
    for (; places_[place] != None; place = (place + 1) & (places_.size() - 1))
        if (index_.Keys[static_cast<size_t>(places_[place])] == key)
            return places_[place];
    return None;
}

} // namespace vardenix
