#pragma once

#include "mapview/MapRenderer.h"

#include <cstdio>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace vardenix::tests {

// What a repaint did, in order, one line for each step: "tile A 0,128 128x128",
// "tile A 0,27 5x5 of 6" (cut from a larger square), "box 0,0 64,64 pen 0000FF 1 none".
// Colours are 00BBGGRR in six digits.
class Story {
public:
    void Tell(const std::string& line) { lines_.push_back(line); }
    const std::vector<std::string>& Lines() const { return lines_; }
    // All lines that begin with `word`.
    std::vector<std::string> Lines(const std::string& word) const {
        std::vector<std::string> found;
        for (const std::string& line : lines_)
            if (line.starts_with(word + " ") || line == word)
                found.push_back(line);
        return found;
    }

private:
    std::vector<std::string> lines_;
};

inline std::string Six(uint32_t color) {
    char text[9];
    std::snprintf(text, sizeof text, "%06X", color);
    return text;
}

class RecordingSurface : public DrawingSurface {
public:
    explicit RecordingSurface(Story& story) : story_(story) {}

    // What a picture is called in the story.
    void Name(TilePictureId id, const std::string& name) { names_[id] = name; }
    // Called before each tile is told of; may throw.
    std::function<void()> OnTile;

    // Nothing is painted, so there are none.
    RasterView Pixels() override { return {}; }
    void Clear(uint32_t color) override { story_.Tell("clear " + Six(color)); }
    bool PaintTile(TilePictures&, TilePictureId id, const PixelRect& cell,
                   int32_t side) override {
        if (OnTile)
            OnTile();
        const bool cut = cell.Width != side || cell.Height != side;
        story_.Tell("tile " + names_[id] + " " + At(cell) +
                    (cut ? " of " + std::to_string(side) : ""));
        return true;
    }
    void BlendColor(const PixelRect& rect, uint32_t color, uint8_t alpha) override {
        story_.Tell("blend " + Six(color) + " " + std::to_string(alpha) + " " + At(rect));
    }
    void AdjustBrightness(double percent) override {
        story_.Tell("brightness " + Number(percent));
    }

    void SetPen(uint32_t color, int32_t width) override {
        pen_ = " pen " + Six(color) + " " + std::to_string(width);
    }
    void SetFill(FillStyle style, uint32_t color) override {
        fill_ = style == FillStyle::None    ? " none"
                : style == FillStyle::Solid ? " solid " + Six(color)
                                            : " hatch " + Six(color);
    }
    void Line(PicturePoint from, PicturePoint to) override {
        story_.Tell("line " + At(from) + " " + At(to) + pen_);
    }
    void Rectangle(PicturePoint corner, PicturePoint opposite) override {
        story_.Tell("box " + At(corner) + " " + At(opposite) + pen_ + fill_);
    }
    void Circle(PicturePoint center, double radius) override {
        story_.Tell("circle " + At(center) + " " + Number(radius) + pen_ + fill_);
    }
    void Ellipse(PicturePoint corner, PicturePoint opposite) override {
        story_.Tell("ellipse " + At(corner) + " " + At(opposite) + pen_ + fill_);
    }
    void Polygon(std::span<const PicturePoint> points) override {
        story_.Tell("polygon" + All(points) + pen_ + fill_);
    }
    void Polyline(std::span<const PicturePoint> points) override {
        story_.Tell("polyline" + All(points) + pen_);
    }

    void SetFont(const FontChoice& font) override {
        story_.Tell("font " + font.Name + " " + Number(font.Size) +
                    (font.Bold ? " bold" : "") + (font.Italic ? " italic" : "") +
                    (font.Strikethrough ? " strike" : "") +
                    (font.Underline ? " underline" : ""));
    }
    // Six pixels a letter, ten high.
    TextSize MeasureText(std::string_view text) override {
        story_.Tell("measure " + std::string(text));
        return {6 * static_cast<int32_t>(text.size()), 10};
    }
    void DrawText(PicturePoint topLeft, std::string_view text, uint32_t color) override {
        story_.Tell("text " + std::string(text) + " " + At(topLeft) + " " + Six(color));
    }

    void DrawRimmedText(PicturePoint topLeft, std::string_view text, uint32_t color,
                        uint32_t rim) override {
        story_.Tell("text " + std::string(text) + " " + At(topLeft) + " " + Six(color) +
                    " rim " + Six(rim));
    }

private:
    static std::string Number(double value) {
        std::ostringstream text;
        text << value;
        return text.str();
    }
    static std::string At(PicturePoint point) {
        return Number(point.X) + "," + Number(point.Y);
    }
    static std::string At(const PixelRect& rect) {
        return std::to_string(rect.Left) + "," + std::to_string(rect.Top) + " " +
               std::to_string(rect.Width) + "x" + std::to_string(rect.Height);
    }
    static std::string All(std::span<const PicturePoint> points) {
        std::string text;
        for (const PicturePoint& point : points)
            text += " " + At(point);
        return text;
    }

    Story& story_;
    std::map<TilePictureId, std::string> names_;
    std::string pen_;
    std::string fill_;
};

// The windows round a repaint, in the same story.
class RecordingScreen : public MapScreen {
public:
    explicit RecordingScreen(Story& story) : story_(story) {}

    // Called after each post; the argument counts them from 1 over both passes.
    std::function<void(int)> OnPost;

    void ClearPicShow() override { story_.Tell("clear PicShow"); }
    void CopyToPicShow() override { story_.Tell("copy"); }
    void LookForEsc() override {
        ++posts_;
        if (OnPost)
            OnPost(posts_);
    }
    void MakeViewPort(const MapView& view) override {
        story_.Tell("viewport " + std::to_string(view.MapLeftX) + "," +
                    std::to_string(view.MapBottomY) + " zoom " +
                    std::to_string(view.ZoomPosts));
    }

private:
    Story& story_;
    int posts_ = 0;
};

} // namespace vardenix::tests
