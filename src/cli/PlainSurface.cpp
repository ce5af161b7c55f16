#include "cli/PlainSurface.h"

#include "texts/RuntimeError.h"

namespace vardenix {

namespace {

[[noreturn]] void RefuseShape() {
    throw RuntimeError(ErrorNumber::InvalidCall,
                       "a shape on a surface without a toolkit");
}

} // namespace

PlainSurface::PlainSurface(int32_t side)
    : side_(side),
      pages_(sizeof(uint32_t) * static_cast<size_t>(side) * static_cast<size_t>(side)) {}

RasterView PlainSurface::Pixels() {
    DoSteps();
    return {static_cast<uint32_t*>(pages_.Data()), side_, side_, side_};
}

void PlainSurface::Circle(PicturePoint, double) { RefuseShape(); }
void PlainSurface::Ellipse(PicturePoint, PicturePoint) { RefuseShape(); }
void PlainSurface::Polygon(std::span<const PicturePoint>) { RefuseShape(); }
void PlainSurface::Polyline(std::span<const PicturePoint>) { RefuseShape(); }
TextSize PlainSurface::MeasureText(std::string_view) { RefuseShape(); }
void PlainSurface::DrawText(PicturePoint, std::string_view, uint32_t) { RefuseShape(); }
void PlainSurface::SlantedLine(PicturePoint, PicturePoint) { RefuseShape(); }
void PlainSurface::HatchedRectangle(const PixelRect&) { RefuseShape(); }

} // namespace vardenix
