#include "features/FeaturesAgain.h"

#include "features/FeatureFile.h"
#include "texts/RuntimeError.h"

#include <sstream>

namespace vardenix {

std::string ShownKinds(const FeatureSwitches& switches) {
    std::string words;
    for (const FeatureKind kind : FeatureKinds)
        if (switches.ShowFeatures && switches.Of(kind))
            words += (words.empty() ? "" : " ") + std::string(KeywordOf(kind));
    return words;
}

std::vector<std::string> LoadFeaturesAgain(const FeaturesOfTheater& remembered,
                                           FeatureSet& features,
                                           FeatureSwitches& switches) {
    std::vector<std::string> missing;
    for (const std::string& path : remembered.Files) {
        try {
            LoadFeatureFile(path, features);
        } catch (const RuntimeError&) {
            missing.push_back(path);
        }
    }
    std::istringstream words(remembered.Shown);
    for (std::string word; words >> word;)
        for (const FeatureKind kind : FeatureKinds)
            if (word == KeywordOf(kind))
                switches.ShowFeatures = switches.Of(kind) = true;
    return missing;
}

} // namespace vardenix
