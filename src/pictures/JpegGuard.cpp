#include "pictures/PictureGuardParts.h"

#include <cstring>
#include <utility>

namespace vardenix::guard {
namespace {

constexpr uint32_t Start = 0xD8;
constexpr uint32_t End = 0xD9;
constexpr uint32_t Scan = 0xDA;

// Every scan walks the whole picture; a few bytes can ask for thousands of them.
constexpr uint64_t MostScannedPixels = uint64_t{1} << 30;

bool StandsAlone(uint32_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= Start);
}

// Frame headers, of which there is one; 0xC4, 0xC8 and 0xCC are tables and the like.
bool IsFrame(uint32_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 &&
           marker != 0xCC;
}

// Notes of cameras and painting programs; 0xE0 and 0xEE tell of the colours and stay.
bool IsNote(uint32_t marker) {
    return marker == 0xFE || (marker >= 0xE1 && marker <= 0xEF && marker != 0xEE);
}

// Walks the markers once and moves what stays to the front of the same bytes.
class Walk {
public:
    Walk(FileBytes& bytes, std::string_view path) : bytes_(bytes), path_(path) {}

    void Run() {
        if (bytes_.size() < 2 || Big16(bytes_, 0) != (0xFF00 | Start))
            Refuse(path_, "not a JPEG file");
        at_ = kept_ = 2;
        for (;;) {
            const uint32_t marker = NextMarker();
            if (marker == End)
                break;
            if (!StandsAlone(marker))
                Segment(marker);
        }
        Keep(at_, 2);
        CheckScans();
    }

    size_t Kept() const { return kept_; }
    uint32_t Width() const { return width_; }
    uint32_t Height() const { return height_; }

private:
    [[noreturn]] void Cut() {
        Refuse(path_, "the file is cut: no end of the picture in its " +
                          std::to_string(bytes_.size()) + " bytes");
    }

    // Leaves at_ on the last 0xFF before the marker's byte.
    uint32_t NextMarker() {
        if (bytes_.size() - at_ < 2)
            Cut();
        if (ByteAt(bytes_, at_) != 0xFF)
            Refuse(path_, "no marker at offset " + std::to_string(at_));
        while (at_ + 1 < bytes_.size() && ByteAt(bytes_, at_ + 1) == 0xFF)
            ++at_;
        if (bytes_.size() - at_ < 2)
            Cut();
        const uint32_t marker = ByteAt(bytes_, at_ + 1);
        if (StandsAlone(marker))
            at_ += 2;
        return marker;
    }

    void Segment(uint32_t marker) {
        const size_t begin = at_;
        if (bytes_.size() - begin < 4)
            Cut();
        const size_t length = Big16(bytes_, begin + 2);
        if (length < 2)
            Refuse(path_, "no segment of a JPEG file at offset " + std::to_string(begin));
        if (bytes_.size() - begin - 2 < length)
            Cut();
        at_ = begin + 2 + length;
        if (IsFrame(marker))
            Frame(begin, length);
        if (marker == Scan)
            SkipScan();
        if (!IsNote(marker))
            Keep(begin, at_ - begin);
    }

    void Frame(size_t begin, size_t length) {
        if (length < 8 || width_ != 0)
            Refuse(path_, "not one frame header as expected");
        height_ = Big16(bytes_, begin + 5);
        width_ = Big16(bytes_, begin + 7);
        CheckSides(width_, height_, path_);
    }

    // Up to the next marker that is no part of the scan's own bytes.
    void SkipScan() {
        const size_t begin = at_;
        ++scans_;
        while (at_ + 1 < bytes_.size()) {
            const uint32_t next = ByteAt(bytes_, at_ + 1);
            if (ByteAt(bytes_, at_) == 0xFF && next != 0 && next != 0xFF &&
                (next < 0xD0 || next > 0xD7))
                break;
            ++at_;
        }
        scannedBytes_ += at_ - begin;
    }

    // A block of 8 by 8 pixels takes a bit or more, however dull it is.
    void CheckScans() const {
        const uint64_t pixels = uint64_t{width_} * height_;
        if (pixels == 0 || scans_ == 0)
            Refuse(path_, "no picture in it");
        if (pixels * scans_ > MostScannedPixels)
            Refuse(path_, std::to_string(scans_) + " scans are too many for its size");
        if (scannedBytes_ * 512 < pixels)
            Refuse(path_, "the file is cut: " + std::to_string(scannedBytes_) +
                              " bytes cannot fill " + std::to_string(width_) + " by " +
                              std::to_string(height_) + " pixels");
    }

    void Keep(size_t begin, size_t length) {
        std::memmove(bytes_.data() + kept_, bytes_.data() + begin, length);
        kept_ += length;
    }

    FileBytes& bytes_;
    std::string_view path_;
    size_t at_ = 0;
    size_t kept_ = 0;
    uint32_t width_ = 0;
    uint32_t height_ = 0;
    uint64_t scans_ = 0;
    uint64_t scannedBytes_ = 0;
};

} // namespace

GuardedPicture GuardJpeg(FileBytes bytes, std::string_view path) {
    Walk walk(bytes, path);
    walk.Run();
    const size_t kept = walk.Kept();
    return {std::move(bytes), kept, static_cast<int32_t>(walk.Width()),
            static_cast<int32_t>(walk.Height())};
}

} // namespace vardenix::guard
