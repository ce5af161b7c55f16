#include "platform/Transaction.h"

namespace vardenix {

StagedFile& Transaction::Stage(std::string_view path) {
    return *files_.emplace_back(std::make_unique<StagedFile>(path));
}

void Transaction::Commit() {
    for (const auto& file : files_)
        file->Finish();
    for (const auto& file : files_)
        file->Commit();
    files_.clear();
}

} // namespace vardenix
