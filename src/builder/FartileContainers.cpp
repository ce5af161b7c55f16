#include "builder/FartileContainers.h"

#include "levels/RebuiltFiles.h"
#include "texts/RuntimeError.h"

#include <optional>

namespace vardenix {

FartileContainers::FartileContainers(RebuildFiles& files,
                                     const std::string& textureFolder,
                                     const FartileShape& shape, const OldFartiles* old)
    : files_(files), paths_{DayContainer(textureFolder), NightContainer(textureFolder)},
      pathOfIndex_(IndexOfFartiles(textureFolder)), shape_(shape), old_(old),
      joiner_(shape.LinearSize()) {
    if (old_ == nullptr)
        Stage();
}

// What agreed with the old containers up to now waits to be copied.
void FartileContainers::Stage() {
    if (staged_[0] != nullptr)
        return;
    const auto header = shape_.Header();
    for (size_t i = 0; i < staged_.size(); ++i) {
        staged_[i] = &files_.Transaction.Stage(paths_[i]);
        staged_[i]->Write(std::as_bytes(std::span(header)));
    }
    waitsFrom_ = 0;
    waiting_ = Count();
}

void FartileContainers::Add(const DrawnFartile& drawn) {
    Stage();
    CopyWhatWaits();
    for (size_t i = 0; i < staged_.size(); ++i)
        staged_[i]->Write(std::as_bytes(std::span(drawn.Bytes[i])), drawn.Sums[i]);
    index_.Keys.push_back(drawn.Key);
    index_.Sums.push_back(drawn.Sums);
}

void FartileContainers::Copy(int32_t from, const Digest& key) {
    if (from != Count())
        Stage();
    if (staged_[0] != nullptr) {
        if (waiting_ > 0 && from != waitsFrom_ + waiting_)
            CopyWhatWaits();
        if (waiting_ == 0)
            waitsFrom_ = from;
        ++waiting_;
    }
    index_.Keys.push_back(key);
    index_.Sums.push_back(old_->SumsOf(from));
}

void FartileContainers::CopyWhatWaits() {
    if (waiting_ == 0)
        return;
    std::array<uint32_t, 2> sums{};
    for (int32_t fartile = waitsFrom_; fartile < waitsFrom_ + waiting_; ++fartile)
        for (size_t i = 0; i < sums.size(); ++i)
            sums[i] = joiner_.Join(sums[i], old_->SumsOf(fartile)[i]);
    const uint64_t at = FartileShape::HeaderBytes +
                        static_cast<uint64_t>(waitsFrom_) * shape_.LinearSize();
    for (size_t i = 0; i < staged_.size(); ++i)
        staged_[i]->CopyFrom(old_->Containers()[i], at,
                             static_cast<uint64_t>(waiting_) * shape_.LinearSize(),
                             sums[i]);
    waiting_ = 0;
}

void FartileContainers::Finish(std::vector<KnownPicture> pictures) {
    if (old_ != nullptr && Count() != old_->Count())
        Stage();
    CopyWhatWaits();
    RequireOldAsTheyWere();
    const uint64_t bytes =
        FartileShape::HeaderBytes + static_cast<uint64_t>(Count()) * shape_.LinearSize();
    for (size_t i = 0; i < staged_.size(); ++i) {
        index_.Containers[i] = staged_[i] != nullptr ? staged_[i]->Settle()
                                                     : old_->Containers()[i].Identity();
        files_.Made.push_back({paths_[i], bytes, staged_[i] == nullptr});
    }
    index_.Pictures = std::move(pictures);
    WriteIndex();
}

// What the index tells of them was believed from the beginning of the run.
void FartileContainers::RequireOldAsTheyWere() const {
    if (old_ == nullptr)
        return;
    for (const ReadableFile& container : old_->Containers())
        if (MarkOfPath(container.Path()) != container.Mark())
            throw RuntimeError(ErrorNumber::PathFileAccess,
                               container.Path() +
                                   " was changed by another program meanwhile");
}

void FartileContainers::WriteIndex() {
    std::optional<RewrittenFile> file;
    try {
        file.emplace(files_, pathOfIndex_);
    } catch (const RuntimeError&) {
        // Something else has the name, or the file may not be replaced. It tells of the
        // containers of before, so nobody will trust it.
        return;
    }
    file->Write(FartileIndexBytes(index_));
    file->Finish();
}

} // namespace vardenix
