// Runs a fuzz target over the files of a folder, without a fuzzer. An empty or missing
// folder is a failure: it would test nothing.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " corpus-folder\n";
        return 2;
    }
    std::vector<std::filesystem::path> paths;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1], error))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        // Named first, so that a crash says where.
        std::cout << path.filename().string() << std::endl;
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()),
                               bytes.size());
    }
    std::cout << paths.size() << " files\n";
    return paths.empty() ? 1 : 0;
}
