#include "updater/ApplyUpdate.h"

#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "loader/UpdateLog.h"
#include "platform/Dialogs.h"
#include "platform/Processes.h"
#include "program/ProgramVersion.h"
#include "texts/RuntimeError.h"
#include "updater/MD5Hash.h"
#include "updater/MinorUpdate.h"
#include "updater/SignedRelease.h"
#include "updater/UpdateArchive.h"
#include "updater/UpdateList.h"
#include "updater/UpdateSignature.h"
#include "updater/UsersFiles.h"
#include "updater/VersionCheck.h"

#include <sys/stat.h>
#include <utility>

namespace vardenix {

namespace {

constexpr const char* ListName = "update.lst";
constexpr uint64_t LongestList = 1 << 20;
constexpr uint64_t LongestSignature = 1 << 10;

// An update that ends without an error, with the box that says why.
struct Aborted {
    std::string Text;
    std::string Title;
};

class Run {
public:
    Run(const std::string& archiveName, const UpdateSetting& setting)
        : archiveName_(archiveName), setting_(setting),
          log_(setting.Folders.AppPath, setting.System.Clock) {}

    std::optional<KeptFiles> Apply() {
        try {
            ApplyAll();
        } catch (const Aborted& aborted) {
            Tell(aborted.Text, aborted.Title);
        } catch (const RefusedUpdate& refused) {
            log_.Write(std::string("The update is refused. ") + refused.what());
            Tell(std::string("The update is refused, and nothing has been changed.\n") +
                     refused.what(),
                 "Error.");
        } catch (const RuntimeError& error) {
            log_.Write("An error occured. Err number" +
                       std::to_string(error.NumberValue()) +
                       "with description: " + error.Description());
            Tell(TrapText(error), "Error...");
        }
        return std::move(kept_);
    }

private:
    void Tell(const std::string& text, const std::string& title) {
        log_.Close();
        setting_.System.Dialogs.Notice(text, title, BoxIcon::Critical);
    }

    void ApplyAll() {
        log_.WritePlain({});
        log_.WritePlain("Update Started at " + log_.Now());
        log_.WritePlain("Upgrading from v" + ProgramVersion() + " to " +
                        setting_.Offer.UpdateVersion);
        RequireOwnInstallation();
        Extract();
        ReadList();
        Validate();
        if (setting_.Offer.UpdateType == UpdateMajor)
            ApplyMajor();
        else if (setting_.Offer.UpdateType == UpdateMinor)
            ApplyMinor();
    }

    void RequireOwnInstallation() const {
        if (!MayUpdateItself(setting_.Folders.AppPath, setting_.Folders.ShippedPath))
            throw RefusedUpdate(std::string(UpdatedBySystem) + ".");
    }

    std::string InTemp(const std::string& name) const {
        return setting_.Folders.UpdateTempFolder + name;
    }

    void Extract() {
        ToolRunner tools(setting_.Folders.AppPath, setting_.Folders.TempFolder);
        const bool whole =
            ExtractUpdate(setting_.Folders.UpdateTempFolder, archiveName_, tools);
        if (whole)
            log_.Write("Extracted " + InTemp(archiveName_) + ".");
        if (whole && FileExists(InTemp(ListName)))
            return;
        log_.Write("Could not find update.lst. Aborting...");
        throw Aborted{"The patch failed to apply, propaby due to a bad download. Try "
                      "again...",
                      "Error"};
    }

    void ReadList() {
        const FileBytes bytes = ReadWholeFile(InTemp(ListName), LongestList);
        if (!setting_.Key.empty())
            RequireSignature(bytes);
        entries_ =
            ReadUpdateList({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (const std::string why = WhyListRefused(entries_); !why.empty())
            throw RefusedUpdate(why);
        if (!setting_.Key.empty())
            RequireNewRelease();
        log_.Write("Read " + std::to_string(entries_.size()) +
                   " entries from file list.");
    }

    void RequireSignature(const FileBytes& list) const {
        const std::string name = InTemp(std::string(ListName) + ".sig");
        if (!FileExists(name))
            throw RefusedUpdate("It has no signature, update.lst.sig.");
        const FileBytes signature = ReadWholeFile(name, LongestSignature);
        if (!IsSignedBy(setting_.Key, list.Span(), signature.Span()))
            throw RefusedUpdate("The signature of update.lst is not the distributor's.");
    }

    void RequireNewRelease() const {
        if (const std::string why =
                WhyReleaseRefused(entries_, setting_.Offer.UpdateType, ProgramVersion());
            !why.empty())
            throw RefusedUpdate(why);
    }

    void Validate() {
        for (size_t i = 0; i < entries_.size(); ++i) {
            const UpdateListEntry& entry = entries_[i];
            if (entry.Command != "COPY" ||
                MD5Hash::HashFile(InTemp(entry.FileName)) == entry.Hash)
                continue;
            log_.Write("Error MD5 hash at filenumber " + std::to_string(i + 1) + ".");
            throw Aborted{"Download Files Corrupted... Update is cancelled...", "Error."};
        }
        log_.Write("All files validated.");
    }

    void ApplyMinor() {
        const std::string loader = setting_.Folders.AppPath + LoaderName;
        setting_.End.HideDownload();
        const MinorUpdate update = PlanMinorUpdate(
            entries_, setting_.Folders, setting_.System.Dialogs,
            [this](const std::string& path) { setting_.End.ShowText(path); }, log_);
        if (!FileExists(loader) && !update.Files.contains(LoaderName))
            throw RuntimeError(ErrorNumber::FileNotFound, ShownPath(loader));
        kept_ = CarryOut(update, setting_.Offer.UpdateVersion, setting_.Folders,
                         setting_.System.Registry, log_);
        log_.Write("Minor Update detected, Closing and starting with the loader.");
        log_.Close();
        setting_.System.Dialogs.Notice("Minor update is finished. Program will restart.",
                                       "Finished", BoxIcon::Information);
        setting_.End.ExitProgram(CommandLine(loader));
    }

    // A name alone is a program by its path, blanks and all.
    std::string CommandLine(const std::string& program) const {
        if (setting_.Arguments.empty())
            return program;
        std::string line = QuotedWord(program);
        for (const std::string& argument : setting_.Arguments)
            line += " " + QuotedWord(argument);
        return line;
    }

    void ApplyMajor() {
        if (entries_.empty() || entries_.front().Command != "COPY")
            throw RefusedUpdate("The first file of its list is no installer.");
        log_.Write("Major Update detected, Closing");
        log_.Close();
        SaveUsersFiles(setting_.Folders.AppPath, setting_.System.Dialogs);
        const std::string installer =
            TextOfPath(RealPath(InTemp(entries_.front().FileName), PathKind::File));
        if (::chmod(installer.c_str(), S_IRWXU) != 0)
            ThrowSystemError(errno, "making ready", installer);
        setting_.End.ExitProgram(installer);
    }

    std::string archiveName_;
    const UpdateSetting& setting_;
    UpdateLog log_;
    std::vector<UpdateListEntry> entries_;
    std::optional<KeptFiles> kept_;
};

} // namespace

std::optional<KeptFiles> ApplyUpdate(const std::string& archiveName,
                                     const UpdateSetting& setting) {
    return Run(archiveName, setting).Apply();
}

} // namespace vardenix
