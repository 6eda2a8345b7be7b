// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Interface of the module that encrypts a session with the keyring. It is a shared object, so that
/// only runs that exchange a secret load the cryptographic library.
///
/// The keys are agreed on by Diffie-Hellman in the second Oakley group (1024 bits), turned into an
/// AES-128 key with HKDF and SHA-256; secrets are in CBC mode with PKCS#7 padding.
namespace vellumo::secretCipherModule {

inline constexpr std::size_t pairSize = 128; ///< bytes of each half of a key pair
inline constexpr std::size_t blockSize = 16; ///< bytes of a key and of an initialization vector

/// Each returns 0 or -1 on any error of the library.
struct Functions {
    /// Makes a new key pair and fills both halves, in network order. Returns 1 on success.
    int (*makePair)(unsigned char *secretHalf, unsigned char *openHalf);
    /// Computes the key shared by this secret half and the peer's open half. Returns 0 also when
    /// the latter is out of range.
    int (*agree)(const unsigned char *secretHalf, const unsigned char *peer, std::size_t peerSize,
                 unsigned char *key);
    /// Makes an initialization vector and fills `sealed`, which must have room for one block more
    /// than `size`. Returns the number of bytes, or -1.
    int (*encrypt)(const unsigned char *key, unsigned char *vector, const unsigned char *plain,
                   int size, unsigned char *sealed);
    /// Fills `plain`, which must have room for one block more than `size`. Returns the number of
    /// bytes, or -1.
    int (*decrypt)(const unsigned char *key, const unsigned char *vector,
                   const unsigned char *sealed, int size, unsigned char *plain);
};

/// Name of the only exported symbol, a Find. It includes the version of Functions and must change
/// with it.
inline constexpr const char *function = "vellumo_secret_cipher_1";

using Find = const Functions *(*)();

} // namespace vellumo::secretCipherModule
