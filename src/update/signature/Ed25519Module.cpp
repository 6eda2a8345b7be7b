// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/signature/Ed25519Module.h"

#include <memory>

#include <openssl/evp.h>

extern "C" __attribute__((visibility("default"))) int
vellumo_ed25519_verify_1(const unsigned char *key, const unsigned char *signature,
                         const unsigned char *message, std::size_t messageSize)
{
    constexpr std::size_t keySize = 32;
    constexpr std::size_t signatureSize = 64;
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> handle(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, key, keySize), &EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          &EVP_MD_CTX_free);
    const bool isGood = handle && context
        && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, handle.get()) == 1
        && EVP_DigestVerify(context.get(), signature, signatureSize, message, messageSize) == 1;
    return isGood ? 1 : 0;
}
