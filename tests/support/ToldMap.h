#pragma once

#include "workspace/MapMouse.h"

#include <functional>
#include <optional>
#include <string>

namespace vardenix::tests {

// Answers the details dialog, and writes down what a click asks for behind what it asks
// of the workspace.
class ToldMap : public MapWishes {
public:
    explicit ToldMap(std::string& story) : story_(story) {}

    std::optional<TerrainPost> PostAnswer;
    std::optional<int16_t> ElevationAnswer;
    TerrainPost AskedPost{};

    std::optional<TerrainPost> EditPost(const TerrainPost& post) override {
        AskedPost = post;
        story_ += " post?";
        return PostAnswer;
    }
    std::optional<int16_t> EditElevation(int16_t elevation) override {
        story_ += " height " + std::to_string(elevation) + "?";
        return ElevationAnswer;
    }
    void TakeDropped(const std::string& path) override { story_ += " take " + path; }
    void ExportTiles() override { story_ += " export"; }
    void SubExportTDFs() override { story_ += " tdfs"; }
    void ImportTiles() override { story_ += " import"; }
    void PickTile(int32_t tileNumber) override {
        story_ += " pick " + std::to_string(tileNumber);
    }
    // Sets the zoom, as the panel would.
    std::function<void(int16_t)> OnZoom;
    void SetZoom(int16_t zoomPosts) override {
        if (OnZoom)
            OnZoom(zoomPosts);
    }
    void LoadFeatures(const std::vector<std::string>& paths) override {
        for (const std::string& path : paths)
            story_ += " load " + path;
    }
    void HideFrame7() override { story_ += " nohint"; }

private:
    std::string& story_;
};

} // namespace vardenix::tests
