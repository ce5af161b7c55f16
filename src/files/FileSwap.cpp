#include "files/FileSwap.h"

#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "files/Transaction.h"

#include <utility>

namespace vardenix {

FileSwap::FileSwap(const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        if (FileExists(path))
            kept_.push_back({path, ReadableFile(path).ReadAll(), {}});
}

void FileSwap::Replaced() {
    for (Kept& kept : kept_)
        kept.There = IdentityOfRealPath(RealPath(kept.Path));
}

void FileSwap::Swap() {
    std::vector<FileBytes> there;
    Transaction files;
    std::vector<const StagedFile*> staged;
    for (const Kept& kept : kept_) {
        StagedFile& file = files.Stage(kept.Path, kept.There);
        file.Write(kept.Bytes.Span());
        staged.push_back(&file);
        there.push_back(FileExists(kept.Path) ? ReadableFile(kept.Path).ReadAll()
                                              : FileBytes());
    }
    files.Commit();
    for (size_t i = 0; i < kept_.size(); ++i) {
        kept_[i].Bytes = std::move(there[i]);
        kept_[i].There = staged[i]->Identity();
    }
}

size_t FileSwap::Bytes() const {
    size_t bytes = 0;
    for (const Kept& kept : kept_)
        bytes += sizeof kept + kept.Path.size() + kept.Bytes.size();
    return bytes;
}

} // namespace vardenix
