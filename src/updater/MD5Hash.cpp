#include "updater/MD5Hash.h"

#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "texts/RuntimeError.h"

#include <array>
#include <memory>
#include <openssl/err.h>
#include <openssl/evp.h>

namespace vardenix {

namespace {

constexpr size_t BlockSize = 16384;

[[noreturn]] void Fail(const char* what) {
    throw RuntimeError(ErrorNumber::InvalidCall, what + std::to_string(::ERR_get_error()),
                       "");
}

class Hash {
public:
    Hash() : context_(::EVP_MD_CTX_new(), &::EVP_MD_CTX_free) {
        if (!context_)
            Fail("Failed to obtain access to CryptoAPI, system error ");
        if (::EVP_DigestInit_ex(context_.get(), ::EVP_md5(), nullptr) != 1)
            Fail("Failed to create CryptoAPI Hash object, system error ");
    }

    void Add(std::span<const std::byte> bytes) {
        if (::EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()) != 1)
            Fail("Failed to hash data block, system error ");
    }

    std::string Text() {
        constexpr const char* digits = "0123456789ABCDEF";
        std::array<unsigned char, EVP_MAX_MD_SIZE> value{};
        unsigned length = 0;
        if (::EVP_MD_CTX_size(context_.get()) < 1)
            Fail("Failed to obtain hash value length, system error ");
        if (::EVP_DigestFinal_ex(context_.get(), value.data(), &length) != 1)
            Fail("Failed to obtain hash value, system error ");
        std::string text;
        for (unsigned i = 0; i < length; ++i) {
            text += digits[value.at(i) / 16];
            text += digits[value.at(i) % 16];
        }
        return text;
    }

private:
    std::unique_ptr<EVP_MD_CTX, decltype(&::EVP_MD_CTX_free)> context_;
};

} // namespace

std::string MD5Hash::HashBytes(std::span<const std::byte> bytes) {
    Hash hash;
    hash.Add(bytes);
    return hash.Text();
}

std::string MD5Hash::HashFile(const std::string& path) {
    if (!FileExists(path))
        throw RuntimeError(ErrorNumber::FileNotFound, "File doesn't exist",
                           "MD5Hash.HashFile: " + ShownPath(path));
    const ReadableFile file(path);
    Hash hash;
    std::array<std::byte, BlockSize> block{};
    for (uint64_t at = 0; at < file.Size();) {
        const size_t count = file.ReadAt(at, block);
        if (count == 0)
            break;
        hash.Add({block.data(), count});
        at += count;
    }
    return hash.Text();
}

} // namespace vardenix
