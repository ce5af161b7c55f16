#include "updater/Archives.h"

#include "files/FileNames.h"
#include "platform/RunAndRead.h"
#include "platform/RunAndWait.h"
#include "texts/RuntimeError.h"

#include <filesystem>
#include <functional>
#include <utility>

namespace vardenix {

namespace {

// The archive program under the names it has; a text of ours is a path from the root,
// which it cannot take for a switch or a list. `run` gives -1 where there is none.
void RunArchiver(const std::vector<std::string>& arguments,
                 const std::function<int(std::vector<std::string>)>& run) {
    for (const char* program : {"7zz", "7z"}) {
        std::vector<std::string> line{program};
        line.insert(line.end(), arguments.begin(), arguments.end());
        if (run(std::move(line)) != -1)
            return;
    }
    throw RuntimeError(ErrorNumber::FileNotFound,
                       "neither 7zz nor 7z could be run; install the package 7zip");
}

int RunArchiver(const std::vector<std::string>& arguments) {
    int exitCode = -1;
    RunArchiver(arguments, [&exitCode](std::vector<std::string> line) {
        return exitCode = RunAndWait(std::move(line));
    });
    return exitCode;
}

std::string FromRoot(const std::string& path) {
    return std::filesystem::absolute(RealPath(path)).string();
}

} // namespace

int ZipAddFiles(const ToolRunner& tools, const std::string& archivePath,
                const std::vector<std::string>& newTilesList) {
    tools.WriteList("list.txt", newTilesList);
    tools.WriteBatch({tools.Tool("7z.exe") + " a " + Quoted(archivePath) + " @" +
                      Quoted(tools.TempFolder() + "list.txt")});
    // A list cannot hold a name with a line end, and one name a line is what it is for.
    std::vector<std::string> arguments{"a", "-spd", "--", FromRoot(archivePath)};
    for (const std::string& path : newTilesList)
        arguments.push_back(FromRoot(path));
    return RunArchiver(arguments);
}

int ZipExtract(const ToolRunner& tools, const std::string& archivePath,
               const std::string& targetFolder) {
    tools.WriteBatch({tools.Tool("7z.exe") + " e " + Quoted(archivePath) + " -o" +
                      Quoted(targetFolder) + " -y "});
    return RunArchiver(
        {"e", "-y", "-spd", "-o" + FromRoot(targetFolder), "--", FromRoot(archivePath)});
}

std::optional<ArchiveListing> ZipList(const std::string& archivePath) {
    constexpr size_t most = 4 << 20; // of any archive that is worth extracting
    ProgramOutput output;
    RunArchiver({"l", "-slt", "-sccUTF-8", "-spd", "--", FromRoot(archivePath)},
                [&output](std::vector<std::string> line) {
                    output = RunAndRead(std::move(line), most);
                    return output.Whole ? output.ExitCode : 1;
                });
    if (!output.Whole || output.ExitCode != 0)
        return std::nullopt;
    return ParseArchiveListing(output.Text);
}

} // namespace vardenix
