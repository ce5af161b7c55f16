#include "levels/Terrain.h"

#include "companion/Vardenix.h"
#include "texts/RuntimeError.h"

#include <limits>

namespace vardenix {

template <typename Value>
SerialArray<Value>::SerialArray(int64_t upperBound) {
    if (upperBound <= 0)
        return;
    if (upperBound > std::numeric_limits<int32_t>::max())
        throw RuntimeError(ErrorNumber::Overflow,
                           std::to_string(upperBound) + " elements have no serials");
    pages_ = ZeroPages(static_cast<size_t>(upperBound) * sizeof(Value));
    upperBound_ = static_cast<int32_t>(upperBound);
}

template <typename Value>
void SerialArray<Value>::RequireInside(int64_t index) const {
    if (index < 1 || index > upperBound_)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "index " + std::to_string(index) + " of 1 to " +
                               std::to_string(upperBound_));
}

template <typename Value>
Value& SerialArray<Value>::operator()(int64_t index) {
    RequireInside(index);
    return First()[index - 1];
}

template <typename Value>
const Value& SerialArray<Value>::operator()(int64_t index) const {
    RequireInside(index);
    return First()[index - 1];
}

template class SerialArray<TerrainPost>;
template class SerialArray<int16_t>;

namespace {

int64_t SerialOf(const ElevationLayer& layer, int32_t x, int32_t y) {
    if (x < 1 || x > layer.EMapWidth || y < 1 || y > layer.EMapWidth)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "X " + std::to_string(x) + ", Y " + std::to_string(y) +
                               " of 1 to " + std::to_string(layer.EMapWidth));
    return XYToSerial(x, y, layer.EMapWidth);
}

} // namespace

int16_t& ElevationLayer::At(int32_t x, int32_t y) {
    return L0ElvArr(SerialOf(*this, x, y));
}

int16_t ElevationLayer::At(int32_t x, int32_t y) const {
    return L0ElvArr(SerialOf(*this, x, y));
}

} // namespace vardenix
