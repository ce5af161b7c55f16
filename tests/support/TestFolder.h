#pragma once

#include <string>
#include <string_view>

namespace vardenix::tests {

// A fresh folder with a blank in its name, gone with its contents when the object goes.
class TestFolder {
public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    // Without a slash at the end.
    const std::string& Path() const { return path_; }
    std::string File(std::string_view name) const;
    // Writes a file of the folder, making missing folders, and gives its path.
    std::string Write(std::string_view name, std::string_view bytes) const;
    // Names of all entries directly in the folder, or in one below it, sorted and joined
    // by blanks.
    std::string Names(std::string_view below = {}) const;

private:
    std::string path_;
};

// By plain streams, so that what is tested does not check itself.
std::string Slurp(const std::string& path);
void Spill(const std::string& path, std::string_view bytes);

// The little-endian bytes of a number.
std::string Int32Bytes(int value);
std::string Int16Bytes(int value);

} // namespace vardenix::tests
