#pragma once

#include "mapview/DrawingSurface.h"
#include "mapview/windows/MapPicture.h"
#include "workspace/MapInteraction.h"

#include <QImage>
#include <QRect>

#include <optional>
#include <vector>

namespace vardenix {

// The hatched edges of what is selected, the clip that follows the pointer and the line
// of a lasso, over the map's picture.
class HandOverlay : public PictureOverlay {
public:
    // Both are borrowed.
    HandOverlay(const MapView& view, const MapInteraction& interaction)
        : view_(view), interaction_(interaction) {}

    // View or selection may have changed.
    void Follow();
    // Null for none.
    void SetGhostPicture(QImage picture) { ghost_ = std::move(picture); }
    // The pointer is over a post, and draws a line. True when that looks otherwise now.
    bool PointAt(PostPlace post, std::vector<PicturePoint> line);
    void PaintOver(QPainter& painter) override;

private:
    void PaintGhost(QPainter& painter) const;

    const MapView& view_;
    const MapInteraction& interaction_;
    std::vector<QRect> edges_;
    QImage ghost_;
    PostPlace pointer_;
    std::vector<PicturePoint> line_;
};

} // namespace vardenix
