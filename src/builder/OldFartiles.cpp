#include "builder/OldFartiles.h"

#include "files/StagedFile.h"
#include "levels/RebuiltFiles.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <new>

namespace vardenix {

namespace {

constexpr size_t PieceBytes = size_t{1} << 20;

// Whether the file begins as a container of this shape does and is what the stamp says.
bool IsAsStamped(const ReadableFile& file, const FileStamp& stamp,
                 const FartileShape& shape, RebuildView& view) {
    const FileIdentity& there = file.Identity();
    if (there.Size != stamp.Size || there.Seconds != stamp.Seconds ||
        there.Nanoseconds != stamp.Nanoseconds)
        return false;
    std::vector<std::byte> piece(PieceBytes);
    uint32_t checksum = 0;
    for (uint64_t done = 0; done < there.Size;) {
        const size_t got = file.ReadAt(done, piece);
        const auto bytes = std::span(piece).first(got);
        const auto header = shape.Header();
        if (got == 0 ||
            (done == 0 &&
             (got < header.size() || !std::ranges::equal(std::as_bytes(std::span(header)),
                                                         bytes.first(header.size())))))
            return false;
        checksum = ChecksumOf(bytes, checksum);
        done += got;
        view.GoOn();
    }
    return checksum == stamp.Checksum;
}

} // namespace

std::unique_ptr<const OldFartiles> OldFartiles::Trusted(const std::string& textureFolder,
                                                        const FartileShape& shape,
                                                        RebuildView& view) {
    const auto index = ReadFartileIndex(IndexOfFartiles(textureFolder));
    if (!index)
        return nullptr;
    try {
        auto old = std::make_unique<OldFartiles>(textureFolder, shape);
        if (!old->Fit(*index, shape, view))
            return nullptr;
        old->TakeKeys(index->Keys);
        return old;
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            throw;
    }
    return nullptr;
}

OldFartiles::OldFartiles(const std::string& textureFolder, const FartileShape& shape)
    : linearSize_(shape.LinearSize()), containers_{
                                           ReadableFile(DayContainer(textureFolder)),
                                           ReadableFile(NightContainer(textureFolder))} {}

bool OldFartiles::Fit(const FartileIndex& index, const FartileShape& shape,
                      RebuildView& view) const {
    for (size_t i = 0; i < containers_.size(); ++i)
        if (index.Containers[i].Size !=
                FartileShape::HeaderBytes + index.Keys.size() * linearSize_ ||
            !IsAsStamped(containers_[i], index.Containers[i], shape, view))
            return false;
    return true;
}

void OldFartiles::TakeKeys(const std::vector<Digest>& keys) {
    byKey_.reserve(keys.size());
    for (const Digest& key : keys)
        byKey_.emplace_back(key, static_cast<int32_t>(byKey_.size()));
    std::sort(byKey_.begin(), byKey_.end());
}

int32_t OldFartiles::Find(const Digest& key) const {
    const auto found = std::lower_bound(byKey_.begin(), byKey_.end(), std::pair{key, 0});
    return found != byKey_.end() && found->first == key ? found->second : None;
}

std::vector<uint8_t> OldFartiles::Read(int32_t index, DayOrNight when) const {
    const ReadableFile& container = containers_[static_cast<size_t>(when)];
    std::vector<uint8_t> bytes(linearSize_);
    const uint64_t at =
        FartileShape::HeaderBytes + static_cast<uint64_t>(index) * linearSize_;
    if (container.ReadAt(at, std::as_writable_bytes(std::span(bytes))) < bytes.size())
        throw RuntimeError(ErrorNumber::DeviceIo,
                           container.Path() + " became shorter while it was copied from");
    return bytes;
}

} // namespace vardenix
