#include "make_sample_theater/Files.h"

#include "texts/RuntimeError.h"

#include <cerrno>

namespace vardenix::sample {

OutFile::OutFile(std::filesystem::path path) : path_(std::move(path)) {
    errno = 0;
    stream_.open(path_, std::ios::binary | std::ios::trunc);
    if (!stream_)
        ThrowSystemError(errno, "writing", path_.string());
}

void OutFile::Put(const char* bytes, std::size_t count) {
    stream_.write(bytes, static_cast<std::streamsize>(count));
    if (!stream_)
        ThrowSystemError(errno, "writing", path_.string());
    written_ += static_cast<int64_t>(count);
}

void OutFile::Put(const std::vector<uint8_t>& bytes) {
    Put(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

void OutFile::Put(const std::string& text) { Put(text.data(), text.size()); }

void OutFile::Finish() {
    stream_.close();
    if (!stream_)
        ThrowSystemError(errno, "writing", path_.string());
}

} // namespace vardenix::sample
