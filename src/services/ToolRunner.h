#pragma once

#include "platform/Transaction.h"
#include "services/ArchiveListing.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// A Targa file that becomes a DDS file: block compression 1 with one-bit alpha, without
// mip maps.
struct ConversionJob {
    std::string SourceFile; // full paths
    std::string TargetFile;
};
using ConversionQueue = std::vector<ConversionJob>;

// Work of outside tools. Each run writes "run.bat" in the temporary folder anew, as
// theater makers know it and may run it by hand on the platform that it is for. Here
// nothing reads it: pictures are compressed in this process, and archives are the
// business of the program 7zz (or 7z), which is given its arguments as a list, so that no
// letter of a file's name is ever taken for more than a name.
class ToolRunner {
public:
    // Both with a slash at their end.
    ToolRunner(std::string appPath, std::string tempFolder)
        : appPath_(std::move(appPath)), tempFolder_(std::move(tempFolder)) {}

    // Stages the result of every job, in the order of the queue; they take their places
    // when the caller commits. Pictures are compressed on all cores; `stop`, where there
    // is one, is asked between two of them and ends the run early (false). Error 481 for
    // a source that is no Targa picture, and the system's refusals, each with the file.
    bool RunConversionQueue(const ConversionQueue& queue, Transaction& files,
                            const std::function<bool()>& stop = {});
    // The same in a transaction of its own.
    void RunConversionQueue(const ConversionQueue& queue);

    // Adds files to an archive, made when it is not there; their folders are not kept.
    // Returns the exit code of the program, 0 when all went well. Error 53 with the
    // package's name when there is no such program.
    int ZipAddFiles(const std::string& archivePath,
                    const std::vector<std::string>& newTilesList);
    // Takes everything out of an archive into one folder, over what is there, without the
    // archive's own folders. Exit code and error as above.
    int ZipExtract(const std::string& archivePath, const std::string& targetFolder);
    // What an archive says that it holds; nothing when it cannot be read. Error as above.
    static std::optional<ArchiveListing> ZipList(const std::string& archivePath);

private:
    void WriteList(const std::string& name, const std::vector<std::string>& lines) const;
    std::string Tool(const char* name) const;

    std::string appPath_;
    std::string tempFolder_;
};

} // namespace vardenix
