#include "loader/LoaderList.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/FileOwner.h"
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

// As the folder has it.
std::filesystem::path PlaceOf(const std::string& folder, const LoaderStep& step) {
    return RealPathBelow(PathAsItStands(folder), step.Name, PathKind::File);
}

std::filesystem::path WaitingFor(const std::string& folder, const LoaderStep& step) {
    return PathAsItStands(folder + step.Name + "$");
}

void RequireOurs(const std::string& folder, const std::filesystem::path& path) {
    const auto status = StatusOfLink(path);
    if (status && !BelongsHere(*status, PathAsItStands(folder)))
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           TextOfPath(path) + " belongs to another user");
}

std::vector<LoaderStep> StepsOf(const std::string& folder, const std::string& list) {
    RequireOurs(folder, PathAsItStands(list));
    const FileBytes bytes = ReadWholeFile(list, LongestList);
    std::vector<LoaderStep> steps =
        ReadLoaderList({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    for (const LoaderStep& step : steps) {
        RequireOurs(folder, PlaceOf(folder, step));
        if (step.What != LoaderStep::Kind::Replace)
            continue;
        const auto waiting = WaitingFor(folder, step);
        if (!IsPlainFile(waiting))
            throw RuntimeError(ErrorNumber::FileNotFound, TextOfPath(waiting));
        RequireOurs(folder, waiting);
    }
    return steps;
}

void Replace(const std::string& folder, const LoaderStep& step) {
    const auto place = PlaceOf(folder, step);
    if (std::rename(WaitingFor(folder, step).c_str(), place.c_str()) != 0)
        ThrowSystemError(errno, "replacing", TextOfPath(place));
}

void Delete(const std::string& folder, const LoaderStep& step) {
    const auto place = PlaceOf(folder, step);
    if (StatusOfLink(place))
        DeleteFile(TextOfPath(place));
}

class Finish {
public:
    explicit Finish(const std::string& folder)
        : folder_(folder), list_(folder + LoaderListName), log_(folder, clock_),
          kept_(folder) {}

    bool Run() {
        if (!kept_.SetAside().empty())
            log_.Write(kept_.SetAside());
        try {
            CarryOut(StepsOf(folder_, list_));
            DeleteFile(list_);
            if (kept_.Any())
                kept_.LetGo();
            log_.Write("The loader has finished the update");
            return false;
        } catch (const RuntimeError& error) {
            log_.Write(std::string("The loader could not finish the update. ") +
                       error.what());
        }
        return GoBack();
    }

private:
    void CarryOut(const std::vector<LoaderStep>& steps) {
        for (const LoaderStep& step : steps) {
            begun_ = true;
            if (step.What == LoaderStep::Kind::Replace)
                Replace(folder_, step);
            else
                Delete(folder_, step);
        }
        if (!FlushFolder(PathAsItStands(folder_)))
            ThrowSystemError(errno, "flushing the folder", folder_);
    }

    bool GoBack() {
        if (kept_.Any()) {
            kept_.PutBack();
            log_.Write("The files are the old ones");
            return true;
        }
        DeleteFile(list_);
        log_.Write(begun_ ? "No old files were kept; what was done so far stays"
                          : "Nothing was changed");
        return false;
    }

    SystemClock clock_;
    std::string folder_;
    std::string list_;
    UpdateLog log_;
    KeptFiles kept_;
    bool begun_ = false;
};

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

bool FinishUpdate(const std::string& programFolder) {
    const std::string folder = WithTrailingSlash(programFolder);
    try {
        return IsPlainFile(PathAsItStands(folder + LoaderListName)) &&
               Finish(folder).Run();
    } catch (const RuntimeError& error) {
        const SystemClock clock;
        UpdateLog(folder, clock)
            .Write(std::string("The loader had to leave the update. ") + error.what());
        return false;
    }
}

} // namespace vardenix
