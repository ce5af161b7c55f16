#include "pictures/ConversionQueue.h"

#include "files/BinaryReader.h"
#include "pictures/Dxt1Writer.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/PictureGuard.h"
#include "platform/ForEachInParallel.h"
#include "texts/RuntimeError.h"

#include <cstdint>
#include <span>

namespace vardenix {

namespace {

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
    const Bitmap picture = ConvertTo32Bits(ImageDecode(
        PictureFormat::Targa, ReadWholeFile(sourceFile, PictureLargestFile), sourceFile));
    if (!picture)
        throw RuntimeError(ErrorNumber::OutOfMemory, sourceFile);
    return Dxt1File(PixelsInRgba(picture), picture.Width(), picture.Height(),
                    {Dxt1Fit::Cluster, Dxt1Alpha::OneBit});
}

} // namespace

bool RunConversionQueue(const ToolRunner& tools, const ConversionQueue& queue,
                        Transaction& files, const std::function<bool()>& stop) {
    std::vector<std::string> batch;
    for (const ConversionJob& job : queue)
        batch.push_back(tools.Tool("nvcompress.exe") + " -nomips -bc1a " +
                        Quoted(job.SourceFile) + " " + Quoted(job.TargetFile));
    tools.WriteBatch(batch);
    std::vector<std::vector<uint8_t>> results(queue.size());
    if (!ForEachInParallel(
            queue.size(), [&](size_t i) { results[i] = Converted(queue[i].SourceFile); },
            stop))
        return false;
    for (size_t i = 0; i < queue.size(); ++i)
        files.Stage(queue[i].TargetFile).Write(std::as_bytes(std::span(results[i])));
    return true;
}

void RunConversionQueue(const ToolRunner& tools, const ConversionQueue& queue) {
    Transaction files;
    RunConversionQueue(tools, queue, files);
    files.Commit();
}

} // namespace vardenix
