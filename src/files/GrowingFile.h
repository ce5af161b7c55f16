#pragma once

#include "files/HeldFile.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vardenix {

// A held file that grows by finished records. A thread of its own, which is given their
// bytes and nothing else, writes each as soon as it is handed over and flushes now and
// then, so that whoever hands over never waits for the disk.
//
// In the file a record is the length of its bytes and their CRC-32, 4 bytes each, and
// then the bytes.
class GrowingFile {
public:
    static constexpr size_t HeadBytes = 8;
    // Between what is written and its flush; a program that is killed needs none.
    static constexpr std::chrono::seconds FlushWithin{10};

    // Goes on behind what the file holds. Error 7 where there is no thread to be had.
    explicit GrowingFile(HeldFile file);
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;
    // Once all that was handed over is written and flushed.
    ~GrowingFile();

    // Bytes that the file has once all that was handed over is written.
    uint64_t Size() const { return size_; }
    // A record of less than 4 GiB. The offset that it will begin at.
    uint64_t Append(std::vector<std::byte> record);
    // Waits until all that was handed over is written.
    void Drain();
    // Whether the record that begins at an offset is written whole.
    bool IsWritten(uint64_t offset) const;
    // The bytes of that record. Errors of reading; 13 where they are not what was
    // written.
    std::vector<std::byte> Read(uint64_t offset) const;
    // What the system said when it refused to write, as a sentence; empty while it has
    // not. Nothing more is written then.
    std::string Failure() const;
    void Delete();

private:
    struct Shared;

    std::unique_ptr<Shared> shared_; // with the thread
    uint64_t size_ = 0;
};

} // namespace vardenix
