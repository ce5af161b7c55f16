#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace vardenix::tests {

// The preloaded library of FaultShim.cpp under a name that the loader takes: it holds a
// blank for the end of a name.
class FaultShimLink {
public:
    explicit FaultShimLink(const std::string& shim) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vardenix-shim-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        std::filesystem::create_symlink(shim, folder_ / "shim.so");
    }
    FaultShimLink(const FaultShimLink&) = delete;
    FaultShimLink& operator=(const FaultShimLink&) = delete;
    ~FaultShimLink() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    // What a program's environment needs for a fault at that call.
    std::vector<std::string> Environment(const std::string& mode, int at) const {
        return {"LD_PRELOAD=" + (folder_ / "shim.so").string(), "FAULT_MODE=" + mode,
                "FAULT_AT=" + std::to_string(at),
                // The sanitizer's library wants to come first.
                "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"};
    }

private:
    std::filesystem::path folder_;
};

} // namespace vardenix::tests
