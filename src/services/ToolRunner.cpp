#include "services/ToolRunner.h"

#include "platform/BinaryReader.h"
#include "platform/FileNames.h"
#include "platform/ForEachInParallel.h"
#include "platform/RunAndRead.h"
#include "platform/RunAndWait.h"
#include "platform/RuntimeError.h"
#include "services/Dxt1Writer.h"
#include "services/ImageFiles.h"
#include "services/ImageLayer.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <utility>

namespace vardenix {

namespace {

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

std::vector<uint8_t> PixelsInRgba(const Bitmap& bitmap) {
    std::vector<uint8_t> rgba;
    rgba.reserve(static_cast<size_t>(bitmap.Width()) *
                 static_cast<size_t>(bitmap.Height()) * 4);
    for (int32_t y = 0; y < bitmap.Height(); ++y) {
        const uint8_t* bgra = bitmap.Row(y);
        for (int32_t x = 0; x < bitmap.Width(); ++x, bgra += 4)
            rgba.insert(rgba.end(), {bgra[2], bgra[1], bgra[0], bgra[3]});
    }
    return rgba;
}

std::vector<uint8_t> Converted(const std::string& sourceFile) {
    const Bitmap picture = ConvertTo32Bits(
        ImageDecode(PictureFormat::Targa, ReadWholeFile(sourceFile), sourceFile));
    if (!picture)
        throw RuntimeError(ErrorNumber::OutOfMemory, sourceFile);
    return Dxt1File(PixelsInRgba(picture), picture.Width(), picture.Height(),
                    {Dxt1Fit::Cluster, Dxt1Alpha::OneBit});
}

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

std::string ToolRunner::Tool(const char* name) const { return Quoted(appPath_ + name); }

// What an earlier run left is gone before anything else can fail.
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

bool ToolRunner::RunConversionQueue(const ConversionQueue& queue, Transaction& files,
                                    const std::function<bool()>& stop) {
    std::vector<std::string> batch;
    for (const ConversionJob& job : queue)
        batch.push_back(Tool("nvcompress.exe") + " -nomips -bc1a " +
                        Quoted(job.SourceFile) + " " + Quoted(job.TargetFile));
    WriteList("run.bat", batch);
    std::vector<std::vector<uint8_t>> results(queue.size());
    if (!ForEachInParallel(
            queue.size(), [&](size_t i) { results[i] = Converted(queue[i].SourceFile); },
            stop))
        return false;
    for (size_t i = 0; i < queue.size(); ++i)
        files.Stage(queue[i].TargetFile).Write(std::as_bytes(std::span(results[i])));
    return true;
}

void ToolRunner::RunConversionQueue(const ConversionQueue& queue) {
    Transaction files;
    RunConversionQueue(queue, files);
    files.Commit();
}

int ToolRunner::ZipAddFiles(const std::string& archivePath,
                            const std::vector<std::string>& newTilesList) {
    WriteList("list.txt", newTilesList);
    WriteList("run.bat", {Tool("7z.exe") + " a " + Quoted(archivePath) + " @" +
                          Quoted(tempFolder_ + "list.txt")});
    // A list cannot hold a name with a line end, and one name a line is what it is for.
    std::vector<std::string> arguments{"a", "-spd", "--", FromRoot(archivePath)};
    for (const std::string& path : newTilesList)
        arguments.push_back(FromRoot(path));
    return RunArchiver(arguments);
}

int ToolRunner::ZipExtract(const std::string& archivePath,
                           const std::string& targetFolder) {
    WriteList("run.bat", {Tool("7z.exe") + " e " + Quoted(archivePath) + " -o" +
                          Quoted(targetFolder) + " -y "});
    return RunArchiver(
        {"e", "-y", "-spd", "-o" + FromRoot(targetFolder), "--", FromRoot(archivePath)});
}

std::optional<ArchiveListing> ToolRunner::ZipList(const std::string& archivePath) {
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
