#include "files/ListedFiles.h"

#include "texts/Cutting.h"

namespace vardenix {

ListedFiles::ListedFiles(std::string_view folder) {
    const auto real = RealPath(folder, PathKind::Folder);
    const FolderNames found = NamesIn(real);
    toldAll_ = found.Refusal == 0 && (found.Names.empty() || MayBeEntered(real));
    bool kindsAreKnown = true;
    for (size_t i = 0; i < found.Names.size(); ++i) {
        const auto [place, isNew] =
            kinds_.try_emplace(UpperCase(found.Names[i]), found.Kinds[i]);
        if (!isNew && place->second != ListedKind::File &&
            found.Kinds[i] != ListedKind::NoFile)
            place->second = found.Kinds[i];
        kindsAreKnown = kindsAreKnown && found.Kinds[i] != ListedKind::Unknown;
    }
    if (!toldAll_ || !kindsAreKnown)
        asked_.emplace(folder);
}

bool ListedFiles::Has(std::string_view name) const {
    if (!toldAll_)
        return asked_->HasFile(name);
    const auto found = kinds_.find(UpperCase(name));
    if (found == kinds_.end())
        return false;
    return found->second == ListedKind::Unknown ? asked_->HasFile(name)
                                                : found->second == ListedKind::File;
}

} // namespace vardenix
