#include "platform/ToolRunner.h"

#include "files/FileNames.h"
#include "files/StagedFile.h"

namespace vardenix {

void ToolRunner::WriteList(const std::string& name,
                           const std::vector<std::string>& lines) const {
    const std::string path = tempFolder_ + name;
    if (FileExists(path))
        DeleteFile(path);
    StagedFile file(path);
    for (const std::string& line : lines)
        file.WriteText(line + "\r\n");
    file.Commit();
}

std::string ToolRunner::Tool(const char* name) const { return Quoted(appPath_ + name); }

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

} // namespace vardenix
