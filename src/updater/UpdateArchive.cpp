#include "updater/UpdateArchive.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/PlainName.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <system_error>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

// What is there beside the archive.
std::vector<fs::path> OthersIn(const fs::path& folder, const std::string& archiveName) {
    std::vector<fs::path> others;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error);
         !error && entry != fs::directory_iterator(); entry.increment(error))
        if (entry->path().filename() != archiveName)
            others.push_back(entry->path());
    if (error)
        ThrowSystemError(error.value(), "listing", TextOfPath(folder));
    return others;
}

void RequirePlainName(const std::string& name) {
    if (const std::string why = WhyNotPlain(name); !why.empty())
        throw RefusedUpdate("The name \"" + ShownName(name) + "\" in the archive " + why +
                            ".");
}

[[noreturn]] void NotPlain(const std::string& name) {
    throw RefusedUpdate("\"" + ShownName(name) + "\" in the archive is no plain file.");
}

[[noreturn]] void TooMuch() {
    throw RefusedUpdate("The archive unpacks to more than an update may have.");
}

void Count(uint64_t& whole, uint64_t size) {
    if (size > LargestUpdate - whole)
        TooMuch();
    whole += size;
}

void RequireHarmless(const ArchiveListing& listing, const std::string& archiveName) {
    if (listing.Type != "7z")
        throw RefusedUpdate("The archive is of the type \"" + ShownName(listing.Type) +
                            "\"; updates are 7z archives.");
    if (listing.Files.size() > MostUpdateFiles)
        TooMuch();
    uint64_t whole = 0;
    for (const ArchivedFile& file : listing.Files) {
        RequirePlainName(file.Name);
        if (!file.IsPlain)
            NotPlain(file.Name);
        if (UpperCase(file.Name) == UpperCase(archiveName))
            throw RefusedUpdate("The archive holds a file of its own name.");
        Count(whole, file.Size);
    }
}

// The listing is what the archive claims; this is what has come of it.
void RequirePlainFiles(const std::vector<fs::path>& files) {
    uint64_t whole = 0;
    for (const fs::path& file : files) {
        const std::string name = file.filename().string();
        RequirePlainName(name);
        const auto status = StatusOfLink(file);
        if (!IsFile(status) || status->st_nlink != 1)
            NotPlain(name);
        Count(whole, static_cast<uint64_t>(status->st_size));
    }
}

} // namespace

bool ExtractUpdate(const std::string& folder, const std::string& archiveName,
                   const ToolRunner& tools) {
    const fs::path path = PathAsItStands(folder);
    const std::string archive = folder + archiveName;
    const auto listing = ZipList(archive);
    if (!listing)
        return false;
    RequireHarmless(*listing, archiveName);
    for (const fs::path& other : OthersIn(path, archiveName)) {
        std::error_code error;
        fs::remove_all(other, error);
        if (error)
            ThrowSystemError(error.value(), "deleting", TextOfPath(other));
    }
    if (ZipExtract(tools, archive, folder) != 0)
        return false;
    RequirePlainFiles(OthersIn(path, archiveName));
    return true;
}

} // namespace vardenix
