#include "world/gdal/ShapeStream.h"

#include "world/gdal/Datasets.h"

#include <algorithm>
#include <type_traits>

namespace vardenix {

namespace {

constexpr uint64_t MostPoints = 20000000; // of all shapes, 16 bytes each

template <typename Value>
requires std::is_trivially_copyable_v<Value>
void Put(std::ostream& out, const Value& value) {
    out.write(reinterpret_cast<const char*>(&value), sizeof value);
}

} // namespace

ShapeWriter::ShapeWriter(std::string path)
    : path_(std::move(path)), out_(path_, std::ios::binary) {}

void ShapeWriter::Number(int32_t number) { Put(out_, number); }

void ShapeWriter::Word(const std::string& word) {
    Number(static_cast<int32_t>(word.size()));
    out_.write(word.data(), static_cast<std::streamsize>(word.size()));
}

void ShapeWriter::Write(const StreamedShape& shape) {
    points_ += shape.Points.size();
    if (points_ > MostPoints)
        throw MapRefused("the map has more than 20 million points; cut a part out of it");
    Put(out_, shape.Form);
    Word(shape.Kind);
    Word(shape.Name);
    Number(shape.Value);
    Number(shape.Told);
    Number(static_cast<int32_t>(shape.Points.size()));
    for (const auto& point : shape.Points)
        Put(out_, point);
}

void ShapeWriter::Close() {
    out_.close();
    if (!out_)
        Refuse(path_, "it cannot be written; is the disk full?");
}

ShapeReader::ShapeReader(const std::string& path)
    : path_(path), in_(path, std::ios::binary) {}

int32_t ShapeReader::Number() {
    int32_t number = 0;
    in_.read(reinterpret_cast<char*>(&number), sizeof number);
    return in_ ? number : -1;
}

std::string ShapeReader::Word() {
    std::string word(static_cast<size_t>(std::max(Number(), 0)), ' ');
    in_.read(word.data(), static_cast<std::streamsize>(word.size()));
    return word;
}

bool ShapeReader::Read(StreamedShape& shape) {
    if (in_.peek() == std::ifstream::traits_type::eof())
        return false;
    in_.read(reinterpret_cast<char*>(&shape.Form), sizeof shape.Form);
    shape.Kind = Word();
    shape.Name = Word();
    shape.Value = Number();
    shape.Told = Number();
    shape.Points.resize(static_cast<size_t>(std::max(Number(), 0)));
    in_.read(reinterpret_cast<char*>(shape.Points.data()),
             static_cast<std::streamsize>(shape.Points.size() * sizeof shape.Points[0]));
    if (!in_)
        Refuse(path_, "it is too short");
    return true;
}

} // namespace vardenix
