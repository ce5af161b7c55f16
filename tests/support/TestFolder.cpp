#include "support/TestFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace fs = std::filesystem;

namespace vardenix::tests {

TestFolder::TestFolder() {
    std::string pattern = (fs::temp_directory_path() / "vardenix test XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TestFolder::~TestFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
}

std::string TestFolder::File(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::string TestFolder::Write(std::string_view name, std::string_view bytes) const {
    const fs::path path = File(name);
    fs::create_directories(path.parent_path());
    Spill(path.string(), bytes);
    return path.string();
}

std::string TestFolder::Names(std::string_view below) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(File(below)))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    std::string joined;
    for (const std::string& name : names)
        joined += (joined.empty() ? "" : " ") + name;
    return joined;
}

std::string Slurp(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Spill(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file)
        throw std::runtime_error("cannot write " + path);
}

namespace {

std::string LittleEndian(int value, int width) {
    std::string bytes;
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>((static_cast<unsigned>(value) >> (8 * i)) & 0xFF);
    return bytes;
}

} // namespace

std::string Int32Bytes(int value) { return LittleEndian(value, 4); }
std::string Int16Bytes(int value) { return LittleEndian(value, 2); }

} // namespace vardenix::tests
