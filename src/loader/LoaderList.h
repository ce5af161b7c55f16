#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// What an update leaves to be done once the program has ended, in Loader.lst of its
// folder, one file a line: "name$" takes the place of "name", "name*" means that "name"
// is deleted.
struct LoaderStep {
    enum class Kind { Replace, Delete };
    Kind What;
    std::string Name; // without "$" or "*"
};

constexpr const char* LoaderListName = "Loader.lst";

// Blank lines and a lone "*" are nothing to do. Error 52 for a line that names anything
// but a file of the folder, or ends otherwise; then nothing of the list is to be done.
std::vector<LoaderStep> ReadLoaderList(std::string_view text);

// Carries out the Loader.lst of the folder, where there is one, and takes it away. Either
// all of it is done, and what was kept of the old files (KeptFiles) is let go of; or,
// when anything fails, what was kept is put back. The list and all that it names must
// belong to this user (BelongsHere), which is looked at before anything is changed. Each
// outcome is a line of Update.log. Nothing outside of the folder is touched; nothing is
// thrown. True when the files are the old ones again.
bool FinishUpdate(const std::string& programFolder);

} // namespace vardenix
