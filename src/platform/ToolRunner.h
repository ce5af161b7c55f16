#pragma once

#include <string>
#include <vector>

namespace vardenix {

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

    // The lines of "run.bat".
    void WriteBatch(const std::vector<std::string>& lines) const {
        WriteList("run.bat", lines);
    }
    // A file of the temporary folder, each line ended by CR LF. What an earlier run left
    // under its name is gone before anything else can fail.
    void WriteList(const std::string& name, const std::vector<std::string>& lines) const;

    const std::string& TempFolder() const { return tempFolder_; }
    // A tool beside the program, as a line of the batch names it.
    std::string Tool(const char* name) const;

private:
    std::string appPath_;
    std::string tempFolder_;
};

// A text between double quotes.
std::string Quoted(const std::string& text);

} // namespace vardenix
