#pragma once

#include "program/DeskFile.h"
#include "program/FeatureSet.h"

#include <string>
#include <vector>

namespace vardenix {

// The kinds that are shown, as FeaturesOfTheater has them.
std::string ShownKinds(const FeatureSwitches& switches);

// Loads and shows what is remembered for a theater. A file that cannot be read is passed
// over and told.
std::vector<std::string> LoadFeaturesAgain(const FeaturesOfTheater& remembered,
                                           FeatureSet& features,
                                           FeatureSwitches& switches);

} // namespace vardenix
