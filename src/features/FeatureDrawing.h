#pragma once

#include "mapview/MapLayout.h"
#include "mapview/MapRenderer.h"
#include "program/Configuration.h"
#include "program/FeatureSet.h"

#include <cstdint>

namespace vardenix {

// Of the sliders in FrmVXFeatures, pixels. Stored sizes outside act as the nearest
// inside.
constexpr ControlRange FeatureSizeRange{1, 20, 5};

// How a kind is drawn, in the settings.
FeatureStyle& StyleOf(Configuration& settings, FeatureKind kind);
const FeatureStyle& StyleOf(const Configuration& settings, FeatureKind kind);

// The pixel of a point, half to even: the middle of the cell of a post, for whole
// numbers. It may lie anywhere.
PicturePoint FeaturePixel(const MapView& view, const FeaturePoint& point);

// The features, drawn on top of the map. What cannot touch the picture is passed over; it
// changes no pixel. Everything is borrowed.
class DrawnFeatures : public FeatureLayer {
public:
    struct Sources {
        const FeatureSet& Features;
        const FeatureSwitches& Switches;
        const Configuration& Settings;
    };
    explicit DrawnFeatures(const Sources& sources) : sources_(sources) {}

    bool ShowFeatures() const override { return sources_.Switches.ShowFeatures; }
    bool Shown(FeatureKind kind) const override { return sources_.Switches.Of(kind); }
    void FeatureDraw(DrawingSurface& surface, const MapView& view, FeatureKind kind,
                     bool flag) override;

private:
    Sources sources_;
};

} // namespace vardenix
