#include "files/RunFolders.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/OwnFolders.h"
#include "texts/RuntimeError.h"

#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr std::string_view LockEnding = ".lock";
// A run that ends takes the empty home away just when another one begins.
constexpr int TimesToBegin = 100;

fs::path LockOf(const std::string& name, const fs::path& home) {
    return home / (name + std::string(LockEnding));
}

} // namespace

RunName::RunName(const std::string& home) : RunName(Taken(home)) {}

RunName RunName::Taken(const std::string& home) {
    const fs::path path = PathAsItStands(home);
    for (int times = 1;; ++times)
        try {
            MakeScratchFolder(home);
            for (int number = 1;; ++number) {
                std::string name = std::to_string(number);
                if (auto lock = HeldFile::Make(LockOf(name, path)))
                    return {std::move(name), std::move(*lock)};
            }
        } catch (const RuntimeError& error) {
            if (error.Number() != ErrorNumber::FileNotFound || times == TimesToBegin)
                throw;
        }
}

void ClearRunFolders(const std::string& folder, const std::string& home) {
    const fs::path path = PathAsItStands(folder);
    if (!IsFolder(StatusOfLink(path)))
        return DeleteFolderTree(folder);
    for (const std::string& name : NamesIn(path).Names) {
        if (name == "." || name == "..")
            continue;
        const std::string run = name.ends_with(LockEnding)
                                    ? name.substr(0, name.size() - LockEnding.size())
                                    : name;
        const fs::path lock = LockOf(run, PathAsItStands(home));
        std::optional<HeldFile> left;
        if (IsFile(StatusOfLink(lock)) && !(left = HeldFile::Take(lock)))
            continue;
        DeleteFolderTree(TextOfPath(path / run));
        DeleteFolderTree(TextOfPath(path / name));
    }
    std::error_code stays;
    fs::remove(path, stays);
}

} // namespace vardenix
