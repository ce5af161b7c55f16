#include "program/FeatureSet.h"

#include <utility>

namespace vardenix {

const FeatureList& FeatureSet::Of(FeatureKind kind) const {
    switch (kind) {
    case FeatureKind::Airport:
        return Airports;
    case FeatureKind::City:
        return Cities;
    case FeatureKind::Coast:
        return Coasts;
    case FeatureKind::Label:
        return Labels;
    case FeatureKind::River:
        return Rivers;
    case FeatureKind::Road:
        break;
    }
    return Roads;
}

FeatureList& FeatureSet::Of(FeatureKind kind) {
    return const_cast<FeatureList&>(std::as_const(*this).Of(kind));
}

size_t FeatureSet::Count() const {
    size_t count = 0;
    for (const FeatureKind kind : FeatureKinds)
        count += Of(kind).size() - 1;
    return count;
}

} // namespace vardenix
