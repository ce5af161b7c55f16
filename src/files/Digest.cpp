#include "files/Digest.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <memory>
#include <openssl/evp.h>

namespace vardenix {

namespace {

struct FreeContext {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

// Looked up once: that takes longer than a short digest.
const EVP_MD* Sha256() {
    static const EVP_MD* const method = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    return method;
}

} // namespace

Digest DigestOf(std::initializer_list<std::span<const std::byte>> parts) {
    // Made once for each thread: that, too, takes longer than a short digest.
    thread_local const std::unique_ptr<EVP_MD_CTX, FreeContext> context(EVP_MD_CTX_new());
    bool good = context && EVP_DigestInit_ex(context.get(), Sha256(), nullptr) == 1;
    for (const auto& part : parts)
        good = good && EVP_DigestUpdate(context.get(), part.data(), part.size()) == 1;
    std::array<uint8_t, EVP_MAX_MD_SIZE> whole{};
    if (!good || EVP_DigestFinal_ex(context.get(), whole.data(), nullptr) != 1)
        throw RuntimeError(ErrorNumber::OutOfMemory, "comparing contents");
    Digest digest;
    std::copy_n(whole.begin(), digest.size(), digest.begin());
    return digest;
}

std::string TextOf(const Digest& digest) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : digest) {
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
    return text;
}

} // namespace vardenix
