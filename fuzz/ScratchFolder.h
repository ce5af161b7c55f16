#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

// A folder of this process below the system's for temporary files, for readers that take
// a folder; emptied for each input, gone with the object.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string made = std::filesystem::temp_directory_path() / "fuzzXXXXXX";
        if (::mkdtemp(made.data()) == nullptr)
            std::abort();
        path_ = made;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { std::filesystem::remove_all(path_); }

    const std::filesystem::path& Path() const { return path_; }
    void Empty() const {
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            std::filesystem::remove_all(entry.path());
    }
    // Makes missing folders.
    void Write(const std::string& name, std::span<const uint8_t> bytes) const {
        const std::filesystem::path path = path_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path path_;
};
