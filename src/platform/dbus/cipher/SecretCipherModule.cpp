// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/dbus/cipher/SecretCipherModule.h"

#include <algorithm>
#include <array>
#include <memory>

#include <openssl/bn.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

namespace {

using namespace vellumo::secretCipherModule;

using Number = std::unique_ptr<BIGNUM, decltype(&BN_clear_free)>;
using Cipher = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;
using Digest = std::array<unsigned char, EVP_MAX_MD_SIZE>;

constexpr int groupBytes = static_cast<int>(pairSize);

Number numberOf(const unsigned char *bytes, std::size_t size)
{
    return {BN_bin2bn(bytes, static_cast<int>(size), nullptr), &BN_clear_free};
}

Number prime()
{
    return {BN_get_rfc2409_prime_1024(nullptr), &BN_clear_free};
}

/// Computes base to the power of the secret exponent, with leading zeros.
bool power(const BIGNUM *base, BIGNUM *exponent, unsigned char *result)
{
    const std::unique_ptr<BN_CTX, decltype(&BN_CTX_free)> context(BN_CTX_secure_new(),
                                                                  &BN_CTX_free);
    const Number modulus = prime();
    const Number value(BN_new(), &BN_clear_free);
    if (!context || !modulus || !value || base == nullptr || exponent == nullptr) {
        return false;
    }
    BN_set_flags(exponent, BN_FLG_CONSTTIME);
    return BN_mod_exp(value.get(), base, exponent, modulus.get(), context.get()) == 1
        && BN_bn2binpad(value.get(), result, groupBytes) == groupBytes;
}

int makePair(unsigned char *secretHalf, unsigned char *openHalf)
{
    const Number modulus = prime();
    const Number generator(BN_new(), &BN_clear_free);
    const Number exponent(BN_new(), &BN_clear_free);
    const bool isMade = modulus && generator && exponent && BN_set_word(generator.get(), 2) == 1
        && BN_priv_rand_range(exponent.get(), modulus.get()) == 1
        && BN_bn2binpad(exponent.get(), secretHalf, groupBytes) == groupBytes
        && power(generator.get(), exponent.get(), openHalf);
    return isMade ? 1 : 0;
}

/// Returns whether the number is strictly between 1 and the prime less 1; other values would make
/// the key predictable.
bool isInRange(const BIGNUM *peer)
{
    const Number limit = prime();
    return peer != nullptr && limit && BN_sub_word(limit.get(), 1) == 1
        && BN_cmp(peer, BN_value_one()) > 0 && BN_cmp(peer, limit.get()) < 0;
}

bool authenticate(const unsigned char *key, std::size_t keySize, const unsigned char *data,
                  std::size_t size, Digest &result)
{
    unsigned int length = 0;
    return HMAC(EVP_sha256(), key, static_cast<int>(keySize), data, size, result.data(), &length)
        != nullptr
        && length == 32;
}

int agree(const unsigned char *secretHalf, const unsigned char *peer, std::size_t peerSize,
          unsigned char *key)
{
    constexpr std::size_t digestSize = 32;
    constexpr std::array<unsigned char, digestSize> noSalt{};
    constexpr unsigned char first = 1;
    std::array<unsigned char, pairSize> common{};
    Digest extracted{};
    Digest expanded{};
    const Number theirs =
        peerSize <= pairSize ? numberOf(peer, peerSize) : Number(nullptr, &BN_clear_free);
    const bool isAgreed = isInRange(theirs.get())
        && power(theirs.get(), numberOf(secretHalf, pairSize).get(), common.data())
        && authenticate(noSalt.data(), noSalt.size(), common.data(), common.size(), extracted)
        && authenticate(extracted.data(), digestSize, &first, 1, expanded);
    if (isAgreed) {
        std::copy_n(expanded.begin(), blockSize, key);
    }
    OPENSSL_cleanse(common.data(), common.size());
    OPENSSL_cleanse(extracted.data(), extracted.size());
    OPENSSL_cleanse(expanded.data(), expanded.size());
    return isAgreed ? 1 : 0;
}

int encrypt(const unsigned char *key, unsigned char *vector, const unsigned char *plain, int size,
            unsigned char *sealed)
{
    const Cipher cipher(EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
    int body = 0;
    int end = 0;
    const bool isDone = cipher && RAND_bytes(vector, static_cast<int>(blockSize)) == 1
        && EVP_EncryptInit_ex(cipher.get(), EVP_aes_128_cbc(), nullptr, key, vector) == 1
        && EVP_EncryptUpdate(cipher.get(), sealed, &body, plain, size) == 1
        && EVP_EncryptFinal_ex(cipher.get(), sealed + body, &end) == 1;
    return isDone ? body + end : -1;
}

int decrypt(const unsigned char *key, const unsigned char *vector, const unsigned char *sealed,
            int size, unsigned char *plain)
{
    const Cipher cipher(EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
    int body = 0;
    int end = 0;
    const bool isDone = cipher
        && EVP_DecryptInit_ex(cipher.get(), EVP_aes_128_cbc(), nullptr, key, vector) == 1
        && EVP_DecryptUpdate(cipher.get(), plain, &body, sealed, size) == 1
        && EVP_DecryptFinal_ex(cipher.get(), plain + body, &end) == 1;
    return isDone ? body + end : -1;
}

} // namespace

extern "C" __attribute__((visibility("default"))) const Functions *vellumo_secret_cipher_1()
{
    static constexpr Functions functions{&makePair, &agree, &encrypt, &decrypt};
    return &functions;
}
