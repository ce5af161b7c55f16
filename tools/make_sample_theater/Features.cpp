#include "make_sample_theater/Features.h"

#include "make_sample_theater/Files.h"
#include "make_sample_theater/Names.h"
#include "make_sample_theater/Ways.h"

#include <array>
#include <cstdio>
#include <map>
#include <string>
#include <utility>

namespace vardenix::sample {
namespace {

using Line = std::vector<std::pair<double, double>>; // X, Y

// Points of a line beyond this go into a next line; readers count points in 16 bits.
constexpr std::size_t LongestLine = 2000;

void AddFeature(std::string& text, const char* keyword, const Line& line, int value,
                const std::string& name = {}) {
    text += keyword;
    text += " " + std::to_string(line.size());
    for (const auto& [x, y] : line) {
        char point[64];
        std::snprintf(point, sizeof point, " %.2f,%.2f", x, y);
        text += point;
    }
    text += " " + std::to_string(value);
    if (!name.empty())
        text += " " + name;
    text += "\r\n";
}

void AddLine(std::string& text, const char* keyword, const Line& line, int value) {
    for (std::size_t from = 0; from + 1 < line.size(); from += LongestLine - 1) {
        const std::size_t to = std::min(line.size(), from + LongestLine);
        AddFeature(text, keyword,
                   Line(line.begin() + static_cast<std::ptrdiff_t>(from),
                        line.begin() + static_cast<std::ptrdiff_t>(to)),
                   value);
    }
}

// Middles of the edges where the shore passes from post to post, in half posts, so that
// they compare exactly.
using Node = std::pair<int, int>;

// The shore as a walk along the pieces that single posts hold, land on the right hand.
std::vector<Line> TraceCoasts(const Grid<Ground>& corners) {
    std::multimap<Node, Node> pieces;
    const int posts = corners.Side() - 1;
    for (int y = 0; y < posts; ++y) {
        for (int x = 0; x < posts; ++x) {
            const auto land = [&](int dx, int dy) {
                return !IsWater(corners.At(x + dx, y + dy));
            };
            // Around the post: where land begins and where it ends, anticlockwise.
            const std::array<bool, 4> around = {land(0, 0), land(1, 0), land(1, 1),
                                                land(0, 1)};
            const std::array<Node, 4> middles = {{{2 * x + 1, 2 * y},
                                                  {2 * x + 2, 2 * y + 1},
                                                  {2 * x + 1, 2 * y + 2},
                                                  {2 * x, 2 * y + 1}}};
            for (std::size_t i = 0; i < 4; ++i) {
                if (around[i] || !around[(i + 1) % 4])
                    continue;
                std::size_t end = (i + 1) % 4;
                while (around[(end + 1) % 4])
                    end = (end + 1) % 4;
                pieces.emplace(middles[i], middles[end]);
            }
        }
    }
    std::vector<Line> coasts;
    while (!pieces.empty()) {
        Node at = pieces.begin()->first;
        Line line = {{at.first / 2.0 - 0.5, at.second / 2.0 - 0.5}};
        for (auto next = pieces.find(at); next != pieces.end(); next = pieces.find(at)) {
            at = next->second;
            pieces.erase(next);
            line.emplace_back(at.first / 2.0 - 0.5, at.second / 2.0 - 0.5);
        }
        coasts.push_back(std::move(line));
    }
    return coasts;
}

// Along posts a way runs from edge middle to edge middle, which cuts the corners of bends
// as the pictures do.
Line Course(const std::vector<PostPlace>& posts) {
    Line line = {{posts.front().X, posts.front().Y}};
    for (std::size_t i = 1; i < posts.size(); ++i)
        line.emplace_back((posts[i - 1].X + posts[i].X) / 2.0,
                          (posts[i - 1].Y + posts[i].Y) / 2.0);
    line.emplace_back(posts.back().X, posts.back().Y);
    return line;
}

std::string CourseText(const char* keyword,
                       const std::vector<std::vector<PostPlace>>& courses) {
    std::string text;
    for (const auto& course : courses)
        AddLine(text, keyword, Course(course), 1);
    return text;
}

std::string CitiesText(const World& world) {
    std::string text;
    for (const Town& town : world.Towns) {
        const double left = town.Left - 1.0;
        const double right = town.Left + town.Across - 1.0;
        const double bottom = town.Bottom - 1.0;
        const double top = town.Bottom + town.Upward - 1.0;
        AddFeature(
            text, "CITY",
            {{left, bottom}, {right, bottom}, {right, top}, {left, top}, {left, bottom}},
            town.Across * town.Upward);
    }
    return text;
}

std::string AirportsText(const World& world) {
    std::string text;
    for (const Airfield& airfield : world.Airfields)
        AddFeature(text, "AIRPORT", {{airfield.At.X, airfield.At.Y}}, 1, airfield.Name);
    return text;
}

// The highest places, each well away from those before.
void AddPeaks(std::string& text, const World& world) {
    std::vector<PostPlace> peaks;
    const int apart = world.Posts() / 8;
    for (const char* name : PeakNames) {
        PostPlace best;
        float highest = 1500;
        for (int y = 0; y < world.Posts(); ++y) {
            for (int x = 0; x < world.Posts(); ++x) {
                bool free = HeightOfPost(world.Land, x, y) > highest;
                for (const PostPlace& peak : peaks)
                    free = free && std::abs(peak.X - x) + std::abs(peak.Y - y) > apart;
                if (free) {
                    highest = HeightOfPost(world.Land, x, y);
                    best = {x, y};
                }
            }
        }
        if (best.X == 0)
            return;
        peaks.push_back(best);
        AddFeature(text, "LABEL", {{best.X, best.Y}}, 2, name);
    }
}

// The land that reaches furthest to each side.
void AddCapes(std::string& text, const World& world) {
    std::size_t number = 0;
    for (const uint8_t edge : {North, East, South, West}) {
        PostPlace best;
        int furthest = -1 << 30;
        for (int y = 0; y < world.Posts(); ++y) {
            for (int x = 0; x < world.Posts(); ++x) {
                const int reach = x * StepX(edge) + y * StepY(edge);
                if (!TouchesWater(world.Land.Corners, x, y) && reach > furthest) {
                    furthest = reach;
                    best = {x, y};
                }
            }
        }
        if (furthest > -1 << 30)
            AddFeature(text, "LABEL", {{best.X, best.Y}}, 3, CapeNames[number]);
        ++number;
    }
}

std::string LabelsText(const World& world) {
    std::string text;
    for (const Town& town : world.Towns)
        AddFeature(text, "LABEL", {{town.MiddleX() - 0.5, town.MiddleY() - 0.5}}, 1,
                   town.Name);
    AddPeaks(text, world);
    AddCapes(text, world);
    return text;
}

} // namespace

void WriteFeatures(const World& world, const std::filesystem::path& folder) {
    std::string coasts;
    for (const Line& coast : TraceCoasts(world.Land.Corners))
        AddLine(coasts, "COAST", coast, 1);
    WriteFile(folder / "Airports.tdf", AirportsText(world));
    WriteFile(folder / "Cities.tdf", CitiesText(world));
    WriteFile(folder / "Coasts.tdf", coasts);
    WriteFile(folder / "Labels.tdf", LabelsText(world));
    WriteFile(folder / "Rivers.tdf", CourseText("RIVER", world.RiverCourses));
    WriteFile(folder / "Roads.tdf", CourseText("ROAD", world.RoadCourses));
}

} // namespace vardenix::sample
