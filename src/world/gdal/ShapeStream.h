#pragma once

#include <array>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace vardenix {

enum class ShapeForm : uint8_t { Point, Line, Area, Hole };

struct StreamedShape {
    ShapeForm Form = ShapeForm::Point;
    std::string Kind;
    std::string Name;
    int32_t Value = 0;
    int32_t Told = -1; // points of its feature
    std::vector<std::array<double, 2>> Points;
};

// Shapes as ReadShapes tells them; MapRefused for more points than any theater has, and
// where the disk refuses.
class ShapeWriter {
public:
    explicit ShapeWriter(std::string path);
    void Write(const StreamedShape& shape);
    void Close();

private:
    void Number(int32_t number);
    void Word(const std::string& word);

    std::string path_;
    std::ofstream out_;
    uint64_t points_ = 0;
};

class ShapeReader {
public:
    explicit ShapeReader(const std::string& path);
    // False at the end; MapRefused for a file that ends in the middle of a shape.
    bool Read(StreamedShape& shape);

private:
    int32_t Number();
    std::string Word();

    std::string path_;
    std::ifstream in_;
};

} // namespace vardenix
