#include "platform/ZeroPages.h"

#include "texts/RuntimeError.h"

#include <string>
#include <sys/mman.h>

namespace vardenix {

ZeroPages::ZeroPages(size_t bytes) : bytes_(bytes) {
    if (bytes == 0)
        return;
    data_ = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS,
                   -1, 0);
    if (data_ == MAP_FAILED) {
        data_ = nullptr;
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           std::to_string(bytes) + " bytes could not be had");
    }
    // A wish: a system without large pages goes on with small ones.
    ::madvise(data_, bytes, MADV_HUGEPAGE);
}

ZeroPages::~ZeroPages() {
    if (data_ != nullptr)
        ::munmap(data_, bytes_);
}

} // namespace vardenix
