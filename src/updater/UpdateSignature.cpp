#include "updater/UpdateSignature.h"

#include <memory>
#include <openssl/evp.h>
#include <openssl/x509.h>
#include <vector>

namespace vardenix {

namespace {

constexpr size_t SignatureSize = 64;
constexpr size_t KeyText = 60; // 44 bytes: 12 that say what it is, 32 of the key

using Key = std::unique_ptr<EVP_PKEY, decltype(&::EVP_PKEY_free)>;

const unsigned char* BytesOf(std::span<const std::byte> bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

Key KeyOf(std::string_view text) {
    Key none(nullptr, &::EVP_PKEY_free);
    if (text.size() != KeyText)
        return none;
    std::vector<unsigned char> bytes(KeyText);
    const int count = ::EVP_DecodeBlock(
        bytes.data(), reinterpret_cast<const unsigned char*>(text.data()),
        static_cast<int>(text.size()));
    if (count <= 0)
        return none;
    const unsigned char* at = bytes.data();
    Key key(::d2i_PUBKEY(nullptr, &at, count), &::EVP_PKEY_free);
    return key && ::EVP_PKEY_get_id(key.get()) == EVP_PKEY_ED25519 ? std::move(key)
                                                                   : std::move(none);
}

} // namespace

std::string_view UpdateKey() {
#ifdef VARDENIX_UPDATE_KEY
    return VARDENIX_UPDATE_KEY;
#else
    return {};
#endif
}

bool IsSignedBy(std::string_view keyText, std::span<const std::byte> bytes,
                std::span<const std::byte> signature) {
    const Key key = KeyOf(keyText);
    const std::unique_ptr<EVP_MD_CTX, decltype(&::EVP_MD_CTX_free)> context(
        ::EVP_MD_CTX_new(), &::EVP_MD_CTX_free);
    return key && context && signature.size() == SignatureSize &&
           ::EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) ==
               1 &&
           ::EVP_DigestVerify(context.get(), BytesOf(signature), signature.size(),
                              BytesOf(bytes), bytes.size()) == 1;
}

} // namespace vardenix
