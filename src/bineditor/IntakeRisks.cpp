#include "bineditor/IntakeRisks.h"

#include "bineditor/TileNames.h"
#include "catalogue/TextureBinFile.h"
#include "catalogue/TileNumbers.h"
#include "files/FileNames.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <map>
#include <set>

namespace vardenix {

namespace {

constexpr size_t LongestCatalogueName = 20; // bytes
constexpr size_t MostNamed = 5;

std::string FullName(const std::string& file) {
    return BytesFromUtf8(CatalogueName(HName(AfterLastSlash(file))));
}

// Names that differ only behind the catalogue's last letter.
void RequireNamesApart(const std::vector<std::string>& files) {
    std::map<std::string, std::string> byField;
    for (const std::string& file : files) {
        const std::string full = FullName(file);
        const auto [first, isNew] = byField.try_emplace(TileNameField(full), file);
        if (!isNew && FullName(first->second) != full)
            throw RuntimeError(ErrorNumber::BadFileName,
                               AfterLastSlash(first->second) + " and " +
                                   AfterLastSlash(file) + " would both become the tile " +
                                   Utf8FromBytes(TrimBlanks(first->first)) +
                                   ", since the catalogue keeps 20 letters of a name; "
                                   "rename one of them");
    }
}

std::set<std::string> PicturesOf(const std::vector<std::string>& files,
                                 const std::string& folder) {
    std::set<std::string> names;
    for (const std::string& file : files) {
        const FamilyNames family = FamilyOf(AfterLastSlash(file));
        for (const std::string& name : {family.HDay, family.HNight, family.MDay,
                                        family.LDay, family.MNight, family.LNight})
            if (FileExists(folder + name))
                names.insert(UpperCase(BytesFromUtf8(name)));
    }
    return names;
}

std::string Listed(std::vector<std::string> names) {
    const size_t more = names.size() > MostNamed ? names.size() - MostNamed : 0;
    names.resize(names.size() - more);
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

} // namespace

size_t LongestPictureName(const std::string& name) {
    return LongestCatalogueName - std::string(".PCX").size() -
           (name.starts_with('H') ? 0 : 1);
}

IntakeRisks RisksOfIntake(const Catalogue& catalogue,
                          const std::vector<std::string>& files,
                          std::optional<int32_t> replaced) {
    RequireNamesApart(files);
    IntakeRisks risks;
    for (const std::string& file : files)
        if (FullName(file).size() > LongestCatalogueName)
            risks.TooLong.push_back(AfterLastSlash(file));
    const std::set<std::string> pictures = PicturesOf(files, catalogue.DDSFolder);
    if (pictures.empty())
        return risks;
    for (int32_t set = 1; set <= catalogue.Bin.NumSets; ++set)
        for (int32_t slot = 0; slot < SetAt(catalogue.Bin, set).TileCount; ++slot) {
            const int32_t number = FirstNumberOf(set) + slot;
            const auto wanted = WantedPictures(
                std::string(TrimBlanks(TileAt(catalogue.Bin, set, slot).TileName)));
            if (number != replaced &&
                std::any_of(wanted.begin(), wanted.end(), [&](const std::string& name) {
                    return pictures.contains(UpperCase(name));
                }))
                risks.Tiles.push_back(number);
        }
    return risks;
}

std::string TextOfRisks(const IntakeRisks& risks, const Catalogue& catalogue) {
    std::string text;
    if (!risks.TooLong.empty())
        text += Listed(risks.TooLong) + ": at most " +
                std::to_string(LongestPictureName(risks.TooLong.front())) +
                " letters in front of \".dds\" fit into the catalogue. A tile with a "
                "longer name never finds its pictures, and they count as unused; rename "
                "the file instead.";
    if (risks.Tiles.empty())
        return text;
    std::vector<std::string> tiles;
    int64_t posts = 0;
    for (const int32_t number : risks.Tiles) {
        const auto index = static_cast<size_t>(number);
        const bool known = index < catalogue.Lookup.size();
        const std::string name =
            known ? Utf8FromBytes(TrimBlanks(catalogue.Lookup[index].Name)) : "";
        tiles.push_back("tile " + std::to_string(number) +
                        (name.empty() ? "" : " (" + name + ")"));
        posts += known ? std::max(catalogue.Lookup[index].UseCount, 0) : 0;
    }
    return text + (text.empty() ? "" : "\n") + "The pictures of " + Listed(tiles) +
           ", which " + std::to_string(posts) +
           (posts == 1 ? " post shows" : " posts show") +
           ", would be replaced, and there is no undo for it; give the new file another "
           "name instead.";
}

} // namespace vardenix
