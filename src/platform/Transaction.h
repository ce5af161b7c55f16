#pragma once

#include "platform/StagedFile.h"

#include <memory>
#include <string_view>
#include <vector>

namespace vardenix {

// Files that change together: each is staged beside the file it replaces, and Commit puts
// all of them in their places, in the order in which they were staged. What is not
// committed is taken away again and the old files stand.
//
// Every routine throws the system's refusal (61 disk full, 70, 75, 57) with the file's
// name.
class Transaction {
public:
    Transaction() = default;
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Lives as long as the transaction; written to by the caller, never committed by it.
    StagedFile& Stage(std::string_view path);

    // All bytes on the disk, then every file in its place.
    void Commit();

private:
    std::vector<std::unique_ptr<StagedFile>> files_;
};

} // namespace vardenix
