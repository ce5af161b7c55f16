#pragma once

#include "files/FileIdentity.h"
#include "files/KeptFolders.h"
#include "pictures/Bitmap.h"
#include "pictures/PictureFormat.h"
#include "pictures/Raster.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vardenix {

// Day pictures cover their cell; night pictures cover it only where they are brighter
// than the night threshold (MaskNightPicture).
enum class TileUse { Day, Night };

// A number for a path, a format and a use; for as long as the cache lives.
using TilePictureId = int32_t;

// What is known of a picture for a square of a size.
struct ReadyPicture {
    bool IsPicture = false; // as far as it has been looked at
    TileUse Use = TileUse::Day;
    // Null until it has been made. Opaque by day; by night pixels that stay away have no
    // alpha. Good until the next call of Paint, Prepare or BeginRepaint.
    const Raster* Cell = nullptr;
};

// Tile pictures, made once for each cell size, within a memory bound. Those of DXT1
// blocks are unpacked straight to the size of the cell; the others are decoded once and
// stretched. What Paint leaves on a surface is, pixel for pixel, what loading the file
// and ImagePaintDC (day) or ImagePaintTransparent with alpha 255 (night) would leave.
class TilePictures {
public:
    static constexpr size_t DecodedShare = 32;

    // Bytes of pixels kept; what was used least recently goes first, and of one repaint
    // decoded pictures before cells. Decoded pictures take a 32nd part of it at most.
    explicit TilePictures(size_t memoryBound = size_t{256} << 20)
        : memoryBound_(memoryBound) {}
    TilePictures(const TilePictures&) = delete;
    TilePictures& operator=(const TilePictures&) = delete;

    // Called once before each repaint: every file is looked at again at its first use, so
    // that one changed, made or deleted since is seen. Until then the disk is not asked
    // about a file a second time, and one that could not be read is not tried again.
    void BeginRepaint();

    // Makes the cells of `side` pixels that are not there yet, by all processors, for a
    // repaint that is going to paint these pictures. Ends early where memory is short or
    // `stop`, asked now and then, says so: Paint makes what is still missing.
    void Prepare(std::span<const TilePictureId> ids, int32_t side,
                 const std::function<bool()>& stop = {});

    // Whoever paints many posts asks once per tile and keeps the number.
    TilePictureId IdOf(std::string_view path, PictureFormat format, TileUse use);

    // The square of `side` pixels that Paint would stretch the picture to; nothing is
    // made for it.
    ReadyPicture Ready(TilePictureId id, int32_t side);

    // Stretches the whole picture into `cell`, which may reach past the surface and may
    // be empty. False, and nothing painted, when there is no picture: the file is missing
    // or cannot be decoded. `id` is one that IdOf gave.
    bool Paint(const RasterView& target, TilePictureId id, const PixelRect& cell);

    // Bytes kept now, and how often a picture has been decoded, whole or to a size.
    size_t MemoryInUse() const { return memoryInUse_; }
    uint64_t Decodes() const { return decodes_; }
    // Files that are there and could not be read, in the order in which that was seen.
    const std::vector<std::string>& Unreadable() const { return unreadable_; }

private:
    // Something kept: a picture's cell of a size, or with a width of 0 its decoded
    // pixels.
    struct Kept {
        TilePictureId Picture;
        int32_t Width;
        int32_t Height;
        size_t Bytes;
        uint64_t LastRepaint;
    };
    using KeptList = std::list<Kept>; // the most recently used first

    struct Cell {
        Raster Pixels;
        KeptList::iterator Place;
    };

    struct Picture {
        std::string Path;
        std::string AsTold; // with the system's slashes
        PictureFormat Format;
        TileUse Use;
        uint64_t SeenAtRepaint = 0;
        bool Present = false; // in this repaint
        std::string File;
        FileIdentity Identity; // which tells whether it is the file that was read
        Bitmap Decoded;        // 32 bits, or none
        KeptList::iterator DecodedPlace;
        std::vector<std::unique_ptr<Cell>> Cells; // those in use at the front
    };

    // A cell made from the picture's blocks.
    struct MadeCell {
        std::optional<Raster> Pixels; // none for a picture of another kind
        bool Broken = false;
    };
    static MadeCell MakeFromBlocks(const Picture& picture, int32_t width, int32_t height);

    bool Look(Picture& picture);
    void LookAtFile(Picture& picture);
    bool TakeFile(Picture& picture, const std::string& file);
    std::optional<std::filesystem::path> FindInFolder(const std::string& path);

    Cell* FindCell(Picture& picture, const PixelRect& size);
    Cell* MakeCell(TilePictureId id, const PixelRect& size);
    Cell* KeepCell(TilePictureId id, Raster pixels);
    // Counts it. False when there are no pixels; a broken picture is not tried again in
    // this repaint.
    bool TakeMade(Picture& picture, const MadeCell& made);
    bool PrepareBatch(std::span<const TilePictureId> ids, int32_t side,
                      const std::function<bool()>& stop);
    bool Decode(TilePictureId id);
    void TellUnreadable(Picture& picture);

    KeptList::iterator Keep(KeptList& list, const Kept& kept);
    void Touch(KeptList& list, KeptList::iterator place);
    // Adds to the memory in use, or with negative bytes takes off.
    void Count(const Kept& kept, ptrdiff_t bytes);
    void Trim();
    void DropLast(KeptList& list);
    void Forget(Picture& picture);

    size_t memoryBound_;
    size_t memoryInUse_ = 0;
    size_t decodedInUse_ = 0; // of these, decoded pictures
    uint64_t decodes_ = 0;
    std::vector<std::string> unreadable_;
    uint64_t repaint_ = 1;
    std::vector<Picture> pictures_; // by number
    std::unordered_map<std::string, TilePictureId> idByKey_;
    KeptList decoded_;
    KeptList cells_;
    KeptFolders folders_;
};

// Stretches a tile's day picture over the whole surface, or the substitute where there is
// no such picture; false, and nothing painted, when there is neither.
bool PaintWholeTile(TilePictures& pictures, const RasterView& target,
                    std::string_view dayFile, std::string_view substitute);

} // namespace vardenix
