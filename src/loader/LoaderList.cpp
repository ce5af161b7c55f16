#include "loader/LoaderList.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/KeptFiles.h"
#include "files/PlainName.h"
#include "files/StagedFile.h"
#include "loader/UpdateLog.h"
#include "platform/Clock.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"
#include "texts/TextLines.h"

#include <cerrno>
#include <cstdio>

namespace vardenix {

namespace {

constexpr uint64_t LongestList = 1 << 20;

void Replace(const std::string& folder, const std::string& name) {
    const auto waiting = PathAsItStands(folder + name + "$");
    if (!IsPlainFile(waiting))
        throw RuntimeError(ErrorNumber::FileNotFound, TextOfPath(waiting));
    const auto place = RealPathBelow(PathAsItStands(folder), name, PathKind::File);
    if (std::rename(waiting.c_str(), place.c_str()) != 0)
        ThrowSystemError(errno, "replacing", TextOfPath(place));
}

void Delete(const std::string& folder, const std::string& name) {
    const auto place = RealPathBelow(PathAsItStands(folder), name, PathKind::File);
    if (!StatusOfLink(place))
        return;
    DeleteFile(TextOfPath(place));
}

void CarryOut(const std::string& folder, const std::vector<LoaderStep>& steps) {
    for (const LoaderStep& step : steps) {
        if (step.What == LoaderStep::Kind::Replace)
            Replace(folder, step.Name);
        else
            Delete(folder, step.Name);
    }
    if (!FlushFolder(PathAsItStands(folder)))
        ThrowSystemError(errno, "flushing the folder", folder);
}

} // namespace

std::vector<LoaderStep> ReadLoaderList(std::string_view text) {
    std::vector<LoaderStep> steps;
    std::string_view rest = text;
    std::string_view line;
    while (NextLine(rest, line)) {
        if (TrimBlanks(line).empty() || line == "*")
            continue;
        const char end = line.back();
        const std::string name(line.substr(0, line.size() - 1));
        std::string why = WhyNotPlain(name);
        if (why.empty() && end != '$' && end != '*')
            why = "ends neither in \"$\" nor in \"*\"";
        if (!why.empty())
            throw RuntimeError(ErrorNumber::BadFileName,
                               "the name \"" + ShownName(line) + "\" " + why);
        steps.push_back(
            {end == '$' ? LoaderStep::Kind::Replace : LoaderStep::Kind::Delete, name});
    }
    return steps;
}

void FinishUpdate(const std::string& programFolder) {
    const std::string folder = WithTrailingSlash(programFolder);
    const std::string list = folder + LoaderListName;
    const SystemClock clock;
    try {
        if (!IsPlainFile(PathAsItStands(list)))
            return;
        KeptFiles kept(folder);
        try {
            const FileBytes bytes = ReadWholeFile(list, LongestList);
            CarryOut(folder, ReadLoaderList({reinterpret_cast<const char*>(bytes.data()),
                                             bytes.size()}));
            DeleteFile(list);
            if (kept.Any())
                kept.LetGo();
            UpdateLog(folder, clock).Write("The loader has finished the update");
        } catch (const RuntimeError& error) {
            UpdateLog log(folder, clock);
            log.Write(std::string("The loader could not finish the update. ") +
                      error.what());
            if (kept.Any())
                kept.PutBack();
            else
                DeleteFile(list);
            log.Write("The files are the old ones");
        }
    } catch (const RuntimeError& error) {
        UpdateLog(folder, clock)
            .Write(std::string("The loader had to leave the update. ") + error.what());
    }
}

} // namespace vardenix
