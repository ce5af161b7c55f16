#include "files/GrowingFile.h"

#include "files/FileNames.h"
#include "files/StagedFile.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <span>
#include <sys/stat.h>
#include <sys/types.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vardenix {

namespace {

using RecordHead = std::array<uint32_t, 2>; // bytes, and their CRC-32
static_assert(sizeof(RecordHead) == GrowingFile::HeadBytes);

RecordHead HeadOf(std::span<const std::byte> record) {
    return {static_cast<uint32_t>(record.size()), ChecksumOf(record)};
}

bool WriteAll(int handle, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(handle, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0)
            bytes = bytes.subspan(static_cast<size_t>(written));
    }
    return true;
}

void ReadAllAt(int handle, uint64_t offset, std::span<std::byte> bytes,
               const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t read =
            ::pread(handle, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (read < 0 && errno != EINTR)
            ThrowSystemError(errno, "reading", path);
        if (read == 0)
            throw RuntimeError(ErrorNumber::InputPastEnd, path + " has been cut");
        if (read > 0) {
            bytes = bytes.subspan(static_cast<size_t>(read));
            offset += static_cast<uint64_t>(read);
        }
    }
}

} // namespace

struct GrowingFile::Shared {
    explicit Shared(HeldFile file) : File(std::move(file)) {}

    void Work() {
        std::unique_lock lock(Mutex);
        bool flushed = true;
        auto flushAt = std::chrono::steady_clock::time_point::max();
        while (true) {
            const auto wanted = [this] { return !Waiting.empty() || Ends; };
            if (flushed)
                Changed.wait(lock, wanted);
            else
                Changed.wait_until(lock, flushAt, wanted);
            if (!Waiting.empty() && Refusal == 0) {
                WriteNext(lock);
                if (flushed)
                    flushAt = std::chrono::steady_clock::now() + FlushWithin;
                flushed = false;
                Changed.notify_all();
            }
            if (Refusal != 0)
                Waiting.clear();
            const bool ends = Ends && Waiting.empty();
            if (!flushed && (ends || std::chrono::steady_clock::now() >= flushAt)) {
                lock.unlock();
                ::fdatasync(File.Handle());
                lock.lock();
                flushed = true;
            }
            if (ends)
                return;
        }
    }

    // Nobody waits while the disk is at work.
    void WriteNext(std::unique_lock<std::mutex>& lock) {
        const std::vector<std::byte> record = std::move(Waiting.front());
        lock.unlock();
        const RecordHead head = HeadOf(record);
        const bool done = WriteAll(File.Handle(), std::as_bytes(std::span(head))) &&
                          WriteAll(File.Handle(), record);
        const int refusal = done ? 0 : errno;
        lock.lock();
        Refusal = refusal;
        if (done)
            Written += sizeof head + record.size();
        Waiting.pop_front();
    }

    HeldFile File;
    std::mutex Mutex;
    std::condition_variable Changed;
    std::deque<std::vector<std::byte>> Waiting; // the first may be under way
    int Refusal = 0;
    uint64_t Written = 0; // bytes of whole records
    bool Ends = false;
    std::thread Thread;
};

GrowingFile::GrowingFile(HeldFile file)
    : shared_(std::make_unique<Shared>(std::move(file))) {
    const off_t end = ::lseek(shared_->File.Handle(), 0, SEEK_END);
    if (end < 0)
        ThrowSystemError(errno, "writing", TextOfPath(shared_->File.Path()));
    size_ = shared_->Written = static_cast<uint64_t>(end);
    try {
        shared_->Thread = std::thread([shared = shared_.get()] { shared->Work(); });
    } catch (const std::system_error&) {
        throw RuntimeError(ErrorNumber::OutOfMemory, "no thread could be had");
    }
}

GrowingFile::~GrowingFile() {
    {
        const std::lock_guard lock(shared_->Mutex);
        shared_->Ends = true;
    }
    shared_->Changed.notify_all();
    shared_->Thread.join();
}

uint64_t GrowingFile::Append(std::vector<std::byte> record) {
    const uint64_t offset = size_;
    const uint64_t bytes = HeadBytes + record.size();
    {
        const std::lock_guard lock(shared_->Mutex);
        shared_->Waiting.push_back(std::move(record));
    }
    size_ += bytes;
    shared_->Changed.notify_all();
    return offset;
}

bool GrowingFile::IsWritten(uint64_t offset) const {
    const std::lock_guard lock(shared_->Mutex);
    return offset < shared_->Written;
}

std::vector<std::byte> GrowingFile::Read(uint64_t offset) const {
    const std::string path = TextOfPath(shared_->File.Path());
    RecordHead head{};
    ReadAllAt(shared_->File.Handle(), offset, std::as_writable_bytes(std::span(head)),
              path);
    if (head[0] > size_ - std::min(size_, offset + HeadBytes))
        throw RuntimeError(ErrorNumber::TypeMismatch, path + " is damaged");
    std::vector<std::byte> record(head[0]);
    ReadAllAt(shared_->File.Handle(), offset + HeadBytes, record, path);
    if (HeadOf(record) != head)
        throw RuntimeError(ErrorNumber::TypeMismatch, path + " is damaged");
    return record;
}

void GrowingFile::Drain() {
    std::unique_lock lock(shared_->Mutex);
    shared_->Changed.wait(
        lock, [this] { return shared_->Waiting.empty() || shared_->Refusal != 0; });
}

std::string GrowingFile::Failure() const {
    const std::lock_guard lock(shared_->Mutex);
    return shared_->Refusal == 0 ? std::string()
                                 : "writing " + TextOfPath(shared_->File.Path()) + ": " +
                                       std::strerror(shared_->Refusal);
}

void GrowingFile::Delete() { shared_->File.Delete(); }

} // namespace vardenix
