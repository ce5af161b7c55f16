#include "services/TilePictures.h"

#include "platform/RuntimeError.h"
#include "services/ImageFiles.h"
#include "services/ImageLayer.h"
#include "services/ImagePainting.h"
#include "services/Stretching.h"

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

// Stretches first and masks then, which is the same and costs only the pixels that are
// seen. Empty when there is no memory for the mask.
Raster CellOf(const Bitmap& bitmap, int32_t width, int32_t height, TileUse use) {
    Raster raster(width, height);
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {0, 0, width, height}));
    if (use == TileUse::Day)
        return raster;
    const Bitmap masked = MaskNightPicture(PictureToBitmap(raster.View()));
    return masked ? BitmapToPicture(masked) : Raster();
}

} // namespace

void TilePictures::BeginRepaint() {
    ++repaint_;
    folders_.clear();
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
        picture.Format = format;
        picture.Use = use;
    }
    return place->second;
}

bool TilePictures::Paint(const RasterView& target, TilePictureId id,
                         const PixelRect& cell) {
    Picture& picture = pictures_.at(static_cast<size_t>(id));
    if (picture.SeenAtRepaint != repaint_)
        LookAtFile(picture);
    if (!picture.Present)
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

// Most files are found under the name told or where they were before; only for the others
// the folder is read, once per repaint, since there may be thousands of them.
void TilePictures::LookAtFile(Picture& picture) {
    picture.SeenAtRepaint = repaint_;
    std::string asTold = picture.Path;
    std::replace(asTold.begin(), asTold.end(), '\\', '/');
    if (TakeFile(picture, asTold))
        return;
    if (!picture.File.empty() && TakeFile(picture, fs::path(picture.File)))
        return;
    const auto found = FindInFolder(picture.Path);
    if (found && TakeFile(picture, *found))
        return;
    picture.Present = false;
    Forget(picture);
}

// A folder that the system refuses to list shows as its pictures missing, not as a map
// that cannot be painted.
std::optional<fs::path> TilePictures::FindInFolder(const std::string& path) {
    try {
        return IndexOf(UpToLastSlash(path)).Find(AfterLastSlash(path));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

bool TilePictures::TakeFile(Picture& picture, const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return false;
    const auto time = fs::last_write_time(file, error);
    const auto length = error ? 0 : fs::file_size(file, error);
    if (error)
        return false;
    if (file != picture.File || time != picture.Time || length != picture.Length)
        Forget(picture);
    picture.File = file;
    picture.Time = time;
    picture.Length = length;
    picture.Present = true;
    return true;
}

const FolderIndex& TilePictures::IndexOf(const std::string& folder) {
    return folders_.try_emplace(folder, folder.empty() ? "." : folder).first->second;
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

TilePictures::Cell* TilePictures::MakeCell(TilePictureId id, const PixelRect& size) {
    if (!Decode(id))
        return nullptr;
    Picture& picture = pictures_[static_cast<size_t>(id)];
    auto cell = std::make_unique<Cell>();
    cell->Pixels = CellOf(picture.Decoded, size.Width, size.Height, picture.Use);
    if (cell->Pixels.Width() == 0)
        return nullptr;
    cell->Place =
        Keep(cells_, {id, size.Width, size.Height, cell->Pixels.Bytes(), repaint_});
    Cell* made = picture.Cells.insert(picture.Cells.begin(), std::move(cell))->get();
    Trim();
    return made;
}

bool TilePictures::Decode(TilePictureId id) {
    Picture& picture = pictures_[static_cast<size_t>(id)];
    if (picture.Decoded) {
        Touch(decoded_, picture.DecodedPlace);
        return true;
    }
    ++decodes_;
    Bitmap bitmap = ImageLoad(picture.Format, TextOfPath(picture.File));
    if (bitmap && bitmap.BitsPerPixel() != 32)
        bitmap = ConvertTo32Bits(bitmap);
    if (!bitmap) {
        picture.Present = false;
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
