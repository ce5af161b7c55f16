#include "files/KeptFolders.h"

#include <ctime>

namespace vardenix {

namespace {

// File systems tell times by two seconds at the coarsest.
constexpr int64_t CoarsestTick = 2;

// No change that comes from now on can leave this time.
bool IsOld(const FileIdentity& identity) {
    return identity.Present && identity.Seconds + CoarsestTick < std::time(nullptr);
}

} // namespace

const FolderIndex& KeptFolders::Of(const std::string& folder) {
    const auto known = kept_.find(folder);
    if (known != kept_.end() && known->second.Round == round_)
        return known->second.Index;
    const auto real = RealPath(folder, PathKind::Folder);
    const FileIdentity identity = IdentityOfRealPath(real);
    if (known != kept_.end()) {
        Kept& kept = known->second;
        kept.Round = round_;
        if (kept.Settled && kept.Folder == real && kept.Identity == identity)
            return kept.Index;
        kept_.erase(known);
    }
    ++readings_;
    return kept_
        .emplace(folder,
                 Kept{FolderIndex(folder), real, identity, round_, IsOld(identity)})
        .first->second.Index;
}

} // namespace vardenix
