#include "pictures/TilePictures.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "pictures/Dxt1Sampling.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/ImagePainting.h"
#include "pictures/Stretching.h"
#include "platform/ForEachInParallel.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

// The part of a cell that lies on the surface, in the cell's own pixels.
struct VisiblePart {
    int32_t Left, Top, Right, Bottom;
};

VisiblePart Visible(const RasterView& target, const PixelRect& cell) {
    const auto first = [](int32_t begin) {
        return static_cast<int32_t>(std::max<int64_t>(0, -int64_t{begin}));
    };
    const auto end = [](int32_t begin, int32_t length, int32_t surface) {
        return static_cast<int32_t>(
            std::clamp<int64_t>(int64_t{surface} - begin, 0, length));
    };
    return {first(cell.Left), first(cell.Top), end(cell.Left, cell.Width, target.Width),
            end(cell.Top, cell.Height, target.Height)};
}

void CopyCell(const RasterView& target, const Raster& pixels, const PixelRect& cell) {
    const VisiblePart part = Visible(target, cell);
    if (part.Left >= part.Right)
        return;
    const auto length = static_cast<size_t>(part.Right - part.Left) * sizeof(uint32_t);
    for (int32_t y = part.Top; y < part.Bottom; ++y)
        std::memcpy(target.Row(cell.Top + y) + (cell.Left + part.Left),
                    pixels.Row(y) + part.Left, length);
}

// Alpha is 0 or 255 here, so laying over is choosing.
void LayCellOver(const RasterView& target, const Raster& pixels, const PixelRect& cell) {
    const VisiblePart part = Visible(target, cell);
    for (int32_t y = part.Top; y < part.Bottom; ++y) {
        const uint32_t* from = pixels.Row(y);
        uint32_t* to = target.Row(cell.Top + y) + cell.Left;
        for (int32_t x = part.Left; x < part.Right; ++x)
            to[x] = (from[x] & OpaqueBlack) != 0 ? from[x] : Opaque(to[x]);
    }
}

size_t PixelBytes(int64_t width, int64_t height) {
    return static_cast<size_t>(width * height) * sizeof(uint32_t);
}

// A picture is stretched first and masked then, which is the same and costs only the
// pixels that are seen. Empty when there is no memory for the mask.
Raster CellOf(Raster stretched, TileUse use) {
    if (use == TileUse::Day)
        return stretched;
    const Bitmap masked = MaskNightPicture(PictureToBitmap(stretched.View()));
    return masked ? BitmapToPicture(masked) : Raster();
}

Raster StretchedTo(const Bitmap& bitmap, int32_t width, int32_t height) {
    Raster raster(width, height);
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {0, 0, width, height}));
    return raster;
}

// Fewer are made by one thread sooner than another one is started.
constexpr size_t WorthThreads = 8;
// Pictures made at a time; the memory bound is looked at in between.
constexpr size_t Batch = 64;

} // namespace

void TilePictures::BeginRepaint() {
    ++repaint_;
    folders_.LookAgain();
}

TilePictureId TilePictures::IdOf(std::string_view path, PictureFormat format,
                                 TileUse use) {
    std::string key(path);
    key += '\0';
    key += use == TileUse::Day ? 'D' : 'N';
    key += std::to_string(static_cast<int32_t>(format));
    const auto [place, isNew] = idByKey_.try_emplace(
        std::move(key), static_cast<TilePictureId>(pictures_.size()));
    if (isNew) {
        Picture& picture = pictures_.emplace_back();
        picture.Path = path;
        picture.AsTold = path;
        std::replace(picture.AsTold.begin(), picture.AsTold.end(), '\\', '/');
        picture.Format = format;
        picture.Use = use;
    }
    return place->second;
}

bool TilePictures::Paint(const RasterView& target, TilePictureId id,
                         const PixelRect& cell) {
    Picture& picture = pictures_.at(static_cast<size_t>(id));
    if (!Look(picture))
        return false;
    if (cell.Width < 1 || cell.Height < 1) {
        const bool isPicture = !picture.Cells.empty() || Decode(id);
        Trim();
        return isPicture;
    }

    // A cell that would push out everything else is painted without being kept.
    if (PixelBytes(cell.Width, cell.Height) > memoryBound_ / 2) {
        if (!Decode(id))
            return false;
        const PaintPlace place = WholeInto(picture.Decoded, cell);
        if (picture.Use == TileUse::Day)
            ImagePaintDC(target, picture.Decoded, place);
        else
            ImagePaintTransparent(target, MaskNightPicture(picture.Decoded), place);
        Trim();
        return true;
    }
    const Cell* found = FindCell(picture, cell);
    if (found == nullptr)
        found = MakeCell(id, cell);
    if (found == nullptr)
        return false;
    if (picture.Use == TileUse::Day)
        CopyCell(target, found->Pixels, cell);
    else
        LayCellOver(target, found->Pixels, cell);
    return true;
}

void TilePictures::Prepare(std::span<const TilePictureId> ids, int32_t side,
                           const std::function<bool()>& stop) {
    const PixelRect size{0, 0, side, side};
    if (side < 1 || PixelBytes(side, side) > memoryBound_ / 2)
        return;
    std::vector<TilePictureId> missing;
    for (const TilePictureId id : ids) {
        Picture& picture = pictures_.at(static_cast<size_t>(id));
        if (picture.Format == PictureFormat::Dds && Look(picture) &&
            FindCell(picture, size) == nullptr)
            missing.push_back(id);
    }
    const size_t most = memoryBound_ / 2 / PixelBytes(side, side);
    missing.resize(std::min(missing.size(), most));
    for (size_t begin = 0; begin < missing.size(); begin += Batch) {
        const auto batch =
            std::span(missing).subspan(begin, std::min(Batch, missing.size() - begin));
        if (!PrepareBatch(batch, side, stop))
            return;
    }
}

bool TilePictures::PrepareBatch(std::span<const TilePictureId> ids, int32_t side,
                                const std::function<bool()>& stop) {
    std::vector<MadeCell> made(ids.size());
    const auto make = [&](size_t i) {
        made[i] = MakeFromBlocks(pictures_[static_cast<size_t>(ids[i])], side, side);
    };
    if (!ForEachInParallel(ids.size(), make, stop, ids.size() < WorthThreads ? 1 : 0))
        return false;
    for (size_t i = 0; i < ids.size(); ++i) {
        Picture& picture = pictures_[static_cast<size_t>(ids[i])];
        if (TakeMade(picture, made[i]))
            KeepCell(ids[i], std::move(*made[i].Pixels));
    }
    return true;
}

ReadyPicture TilePictures::Ready(TilePictureId id, int32_t side) {
    Picture& picture = pictures_.at(static_cast<size_t>(id));
    if (!Look(picture))
        return {};
    const Cell* cell = FindCell(picture, {0, 0, side, side});
    return {true, picture.Use, cell == nullptr ? nullptr : &cell->Pixels};
}

bool TilePictures::Look(Picture& picture) {
    if (picture.SeenAtRepaint != repaint_)
        LookAtFile(picture);
    return picture.Present;
}

// Most files are found under the name told or where they were before; only for the others
// the folder is read.
void TilePictures::LookAtFile(Picture& picture) {
    picture.SeenAtRepaint = repaint_;
    if (TakeFile(picture, picture.AsTold))
        return;
    if (!picture.File.empty() && picture.File != picture.AsTold &&
        TakeFile(picture, std::string(picture.File)))
        return;
    const auto found = FindInFolder(picture.Path);
    if (found && TakeFile(picture, TextOfPath(*found)))
        return;
    picture.Present = false;
    Forget(picture);
}

// A folder that the system refuses to list shows as its pictures missing, not as a map
// that cannot be painted.
std::optional<fs::path> TilePictures::FindInFolder(const std::string& path) {
    try {
        const std::string folder = UpToLastSlash(path);
        return folders_.Of(folder.empty() ? "." : folder).Find(AfterLastSlash(path));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

bool TilePictures::TakeFile(Picture& picture, const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const FileIdentity identity = IdentityOfStatus(status);
    if (file != picture.File || identity != picture.Identity)
        Forget(picture);
    picture.File = file;
    picture.Identity = identity;
    picture.Present = true;
    return true;
}

TilePictures::Cell* TilePictures::FindCell(Picture& picture, const PixelRect& size) {
    auto& cells = picture.Cells;
    for (size_t i = 0; i < cells.size(); ++i) {
        Cell& cell = *cells[i];
        if (cell.Pixels.Width() != size.Width || cell.Pixels.Height() != size.Height)
            continue;
        if (cell.Place->LastRepaint != repaint_) {
            Touch(cells_, cell.Place);
            std::swap(cells[0], cells[i]);
        }
        return &cell;
    }
    return nullptr;
}

TilePictures::MadeCell TilePictures::MakeFromBlocks(const Picture& picture, int32_t width,
                                                    int32_t height) {
    try {
        auto pixels = LoadDxt1(picture.File, width, height);
        if (!pixels)
            return {};
        Raster cell = CellOf(std::move(*pixels), picture.Use);
        const bool broken = cell.Width() == 0;
        return {std::move(cell), broken};
    } catch (const RuntimeError&) {
        return {std::nullopt, true};
    }
}

bool TilePictures::TakeMade(Picture& picture, const MadeCell& made) {
    if (made.Pixels || made.Broken)
        ++decodes_;
    if (made.Broken)
        TellUnreadable(picture);
    return made.Pixels && !made.Broken;
}

TilePictures::Cell* TilePictures::MakeCell(TilePictureId id, const PixelRect& size) {
    Picture& picture = pictures_[static_cast<size_t>(id)];
    if (picture.Format == PictureFormat::Dds && !picture.Decoded) {
        MadeCell made = MakeFromBlocks(picture, size.Width, size.Height);
        if (TakeMade(picture, made))
            return KeepCell(id, std::move(*made.Pixels));
        if (made.Broken)
            return nullptr;
    }
    if (!Decode(id))
        return nullptr;
    Raster pixels =
        CellOf(StretchedTo(picture.Decoded, size.Width, size.Height), picture.Use);
    return pixels.Width() == 0 ? nullptr : KeepCell(id, std::move(pixels));
}

TilePictures::Cell* TilePictures::KeepCell(TilePictureId id, Raster pixels) {
    Picture& picture = pictures_[static_cast<size_t>(id)];
    auto cell = std::make_unique<Cell>();
    cell->Pixels = std::move(pixels);
    cell->Place = Keep(cells_, {id, cell->Pixels.Width(), cell->Pixels.Height(),
                                cell->Pixels.Bytes(), repaint_});
    Cell* kept = picture.Cells.insert(picture.Cells.begin(), std::move(cell))->get();
    Trim();
    return kept;
}

void TilePictures::TellUnreadable(Picture& picture) {
    picture.Present = false;
    if (std::find(unreadable_.begin(), unreadable_.end(), picture.File) ==
        unreadable_.end())
        unreadable_.push_back(picture.File);
}

bool TilePictures::Decode(TilePictureId id) {
    Picture& picture = pictures_[static_cast<size_t>(id)];
    if (picture.Decoded) {
        Touch(decoded_, picture.DecodedPlace);
        return true;
    }
    ++decodes_;
    Bitmap bitmap = ImageLoad(picture.Format, picture.File);
    if (bitmap && bitmap.BitsPerPixel() != 32)
        bitmap = ConvertTo32Bits(bitmap);
    if (!bitmap) {
        TellUnreadable(picture);
        return false;
    }
    const size_t bytes = PixelBytes(bitmap.Width(), bitmap.Height());
    picture.Decoded = std::move(bitmap);
    picture.DecodedPlace = Keep(decoded_, {id, 0, 0, bytes, repaint_});
    return true;
}

TilePictures::KeptList::iterator TilePictures::Keep(KeptList& list, const Kept& kept) {
    Count(kept, static_cast<ptrdiff_t>(kept.Bytes));
    list.push_front(kept);
    return list.begin();
}

void TilePictures::Touch(KeptList& list, KeptList::iterator place) {
    place->LastRepaint = repaint_;
    list.splice(list.begin(), list, place);
}

void TilePictures::Count(const Kept& kept, ptrdiff_t bytes) {
    memoryInUse_ += static_cast<size_t>(bytes);
    if (kept.Width == 0)
        decodedInUse_ += static_cast<size_t>(bytes);
}

void TilePictures::Trim() {
    // Fresh memory for every decoded picture of a large view costs more than decoding
    // some of them again for the next zoom.
    while (decodedInUse_ > memoryBound_ / DecodedShare && decoded_.size() > 1)
        DropLast(decoded_);
    while (memoryInUse_ > memoryBound_) {
        // A cell of this repaint is worth more than its source: it is wanted again at
        // once.
        const bool cellFirst =
            decoded_.empty() || (cells_.size() > 1 &&
                                 cells_.back().LastRepaint < decoded_.back().LastRepaint);
        if (cellFirst && cells_.size() <= 1)
            return; // the one in use
        DropLast(cellFirst ? cells_ : decoded_);
    }
}

void TilePictures::DropLast(KeptList& list) {
    const Kept kept = list.back();
    Picture& picture = pictures_[static_cast<size_t>(kept.Picture)];
    if (kept.Width == 0)
        picture.Decoded = Bitmap();
    else
        std::erase_if(picture.Cells, [&](const auto& cell) {
            return cell->Pixels.Width() == kept.Width &&
                   cell->Pixels.Height() == kept.Height;
        });
    Count(kept, -static_cast<ptrdiff_t>(kept.Bytes));
    list.pop_back();
}

void TilePictures::Forget(Picture& picture) {
    if (picture.Decoded) {
        Count(*picture.DecodedPlace,
              -static_cast<ptrdiff_t>(picture.DecodedPlace->Bytes));
        decoded_.erase(picture.DecodedPlace);
        picture.Decoded = Bitmap();
    }
    for (const auto& cell : picture.Cells) {
        Count(*cell->Place, -static_cast<ptrdiff_t>(cell->Place->Bytes));
        cells_.erase(cell->Place);
    }
    picture.Cells.clear();
}

bool PaintWholeTile(TilePictures& pictures, const RasterView& target,
                    std::string_view dayFile, std::string_view substitute) {
    const ImageSession session;
    const PixelRect whole{0, 0, target.Width, target.Height};
    const auto painted = [&](std::string_view path, PictureFormat format) {
        return !path.empty() &&
               pictures.Paint(target, pictures.IdOf(path, format, TileUse::Day), whole);
    };
    return painted(dayFile, PictureFormat::Dds) ||
           painted(substitute, PictureFormat::Jpeg);
}

} // namespace vardenix
