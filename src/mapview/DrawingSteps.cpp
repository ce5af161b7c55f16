#include "mapview/DrawingSteps.h"

#include "pictures/ImagePainting.h"
#include "platform/ForEachInParallel.h"

#include <algorithm>
#include <cstring>
#include <thread>

namespace vardenix {

namespace {

// Pixels; less is drawn by one thread sooner than another one is started.
constexpr int64_t WorthThreads = 100000;

PixelBox Cut(const PixelBox& box, const PixelBox& by) {
    return {std::max(box.Left, by.Left), std::max(box.Top, by.Top),
            std::min(box.Right, by.Right), std::min(box.Bottom, by.Bottom)};
}

bool IsEmpty(const PixelBox& box) {
    return box.Left >= box.Right || box.Top >= box.Bottom;
}

int64_t PixelsOf(const PixelBox& box) {
    return IsEmpty(box) ? 0
                        : int64_t{box.Right - box.Left} * int64_t{box.Bottom - box.Top};
}

PixelBox WholeOf(const RasterView& picture) {
    return {0, 0, picture.Width, picture.Height};
}

void Fill(const RasterView& picture, const PixelBox& box, uint32_t color) {
    const PixelBox part = Cut(box, WholeOf(picture));
    if (IsEmpty(part))
        return;
    for (int32_t y = part.Top; y < part.Bottom; ++y)
        std::fill_n(picture.Row(y) + part.Left, part.Right - part.Left, color);
}

void DrawFrame(const RasterView& picture, const PixelBox& box, int32_t width,
               uint32_t color) {
    Fill(picture, {box.Left, box.Top, box.Right, box.Top + width}, color);
    Fill(picture, {box.Left, box.Bottom - width, box.Right, box.Bottom}, color);
    Fill(picture, {box.Left, box.Top, box.Left + width, box.Bottom}, color);
    Fill(picture, {box.Right - width, box.Top, box.Right, box.Bottom}, color);
}

template <typename TakeRow>
void TakePixels(const RasterView& picture, const DrawingStep& step, TakeRow takeRow) {
    const PixelBox pixels{step.X, step.Y, step.X + step.Pixels->Width(),
                          step.Y + step.Pixels->Height()};
    const PixelBox part = Cut(Cut(step.Box, pixels), WholeOf(picture));
    if (IsEmpty(part))
        return;
    for (int32_t y = part.Top; y < part.Bottom; ++y)
        takeRow(step.Pixels->Row(y - step.Y) + (part.Left - step.X),
                picture.Row(y) + part.Left, static_cast<size_t>(part.Right - part.Left));
}

// The first and the last pixels, which meet or overlap: two moves of a known size.
template <size_t Count>
void CopyEnds(const uint32_t* from, uint32_t* to, size_t count) {
    std::memcpy(to, from, Count * sizeof(uint32_t));
    std::memcpy(to + count - Count, from + count - Count, Count * sizeof(uint32_t));
}

// Relies on a row's being as short as a small cell is wide: calling somebody for each
// would take longer than the copying.
void CopyRow(const uint32_t* from, uint32_t* to, size_t count) {
    if (count >= 4 && count <= 8)
        return CopyEnds<4>(from, to, count);
    if (count > 8 && count <= 16)
        return CopyEnds<8>(from, to, count);
    std::memcpy(to, from, count * sizeof(uint32_t));
}

void CopyOpaque(const uint32_t* from, uint32_t* to, size_t count) {
    for (size_t x = 0; x < count; ++x)
        to[x] = (from[x] & OpaqueBlack) != 0 ? from[x] : to[x] | OpaqueBlack;
}

DrawingStep Moved(DrawingStep step, int32_t down) {
    step.Box.Top += down;
    step.Box.Bottom += down;
    if (step.What != DrawingStep::Kind::Frame)
        step.Y += down;
    return step;
}

} // namespace

void DoStep(const RasterView& picture, const DrawingStep& step) {
    switch (step.What) {
    case DrawingStep::Kind::Copy:
        return TakePixels(picture, step, CopyRow);
    case DrawingStep::Kind::CopyOpaque:
        return TakePixels(picture, step, CopyOpaque);
    case DrawingStep::Kind::Fill:
        return Fill(picture, step.Box, step.Color);
    case DrawingStep::Kind::Frame:
        return DrawFrame(picture, step.Box, step.X, step.Color);
    case DrawingStep::Kind::Blend:
        return BlendColor(picture,
                          {step.Box.Left, step.Box.Top, step.Box.Right - step.Box.Left,
                           step.Box.Bottom - step.Box.Top},
                          step.Color, step.Alpha);
    case DrawingStep::Kind::Lay:
        return step.Drawn->LayOver(picture, step.X, step.Y, step.Color, step.Other);
    }
}

void InBands(const RasterView& picture, int32_t first, int32_t last,
             const std::function<void(const RasterView&, int32_t)>& work) {
    first = std::clamp(first, 0, picture.Height);
    last = std::clamp(last, first, picture.Height);
    const auto bands =
        static_cast<int32_t>(std::max(1U, std::thread::hardware_concurrency()));
    const auto begin = [&](size_t band) {
        return first + static_cast<int32_t>(int64_t{last - first} *
                                            static_cast<int64_t>(band) / bands);
    };
    ForEachInParallel(static_cast<size_t>(bands), [&](size_t band) {
        const int32_t top = begin(band);
        work({picture.Row(top), picture.Width, begin(band + 1) - top, picture.Stride},
             top);
    });
}

void DrawingSteps::Do(const RasterView& picture) {
    const PixelBox whole = WholeOf(picture);
    PixelBox touched{0, picture.Height, 0, 0};
    int64_t pixels = 0;
    for (const DrawingStep& step : steps_) {
        const PixelBox part = Cut(step.Box, whole);
        pixels += PixelsOf(part);
        touched.Top = std::min(touched.Top, part.Top);
        touched.Bottom = std::max(touched.Bottom, part.Bottom);
    }
    if (pixels < WorthThreads) {
        for (const DrawingStep& step : steps_)
            DoStep(picture, step);
    } else {
        InBands(picture, touched.Top, touched.Bottom,
                [this](const RasterView& band, int32_t top) {
                    for (const DrawingStep& step : steps_)
                        if (step.Box.Top < top + band.Height && step.Box.Bottom > top)
                            DoStep(band, Moved(step, -top));
                });
    }
    steps_.clear();
}

} // namespace vardenix
