#include "builder/RewrittenFile.h"

#include "files/FileNames.h"
#include "files/Mending.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace vardenix {

namespace {

constexpr size_t CompareBytes = size_t{1} << 18;

} // namespace

void RebuildFiles::Hold(const std::vector<std::string>& paths, DebugLog& log) {
    std::vector<std::filesystem::path> files;
    files.reserve(paths.size());
    for (const std::string& path : paths)
        files.push_back(RealPath(path));
    Locks = LockFoldersOf(files, FolderLock::Exclusive);
    for (const std::string& line : MendFiles(paths))
        log.WriteLog(line);
}

void RebuildFiles::Commit(DebugLog& log) {
    Transaction.Commit();
    for (const std::string& line : Transaction.Mended())
        log.WriteLog(line);
}

RewrittenFile::RewrittenFile(RebuildFiles& files, std::string_view path,
                             std::optional<FileIdentity> read)
    : files_(files), path_(path), read_(read) {
    if (files.How == Rewriting::OnlyChanged && FileExists(path))
        old_.emplace(path_);
    if (old_)
        buffer_.resize(CompareBytes);
    else
        Stage();
}

void RewrittenFile::Stage() {
    staged_ = read_ ? &files_.Transaction.Stage(path_, *read_, files_.IfChanged)
                    : &files_.Transaction.Stage(path_);
}

void RewrittenFile::Write(std::span<const std::byte> bytes) {
    if (staged_ == nullptr && !AgreesWithOld(bytes))
        StageWhatAgreed();
    if (staged_ != nullptr)
        staged_->Write(bytes);
    else
        agreed_ = ChecksumOf(bytes, agreed_);
    position_ += bytes.size();
}

void RewrittenFile::WriteInt32(int32_t value) {
    Write(std::as_bytes(std::span(&value, 1)));
}

void RewrittenFile::Finish() {
    if (staged_ == nullptr) {
        std::byte more{};
        if (old_->ReadAt(position_, {&more, 1}) != 0)
            StageWhatAgreed();
    }
    files_.Made.push_back({path_, position_, staged_ == nullptr});
}

bool RewrittenFile::AgreesWithOld(std::span<const std::byte> bytes) {
    for (size_t done = 0; done < bytes.size();) {
        const auto part =
            bytes.subspan(done, std::min(CompareBytes, bytes.size() - done));
        const size_t got = old_->ReadAt(position_ + done, {buffer_.data(), part.size()});
        if (got < part.size() || std::memcmp(buffer_.data(), part.data(), got) != 0)
            return false;
        done += part.size();
    }
    return true;
}

// The old file's beginning, up to where the new one differs.
void RewrittenFile::StageWhatAgreed() {
    Stage();
    staged_->CopyFrom(*old_, 0, position_, agreed_);
}

} // namespace vardenix
