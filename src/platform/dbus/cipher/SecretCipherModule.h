// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What the module that encrypts a session with the keyring offers: a shared object of its own, so
/// that only a run that hands over a secret loads the cryptographic library.
///
/// The keys are agreed on by Diffie-Hellman in the second Oakley group (1024 bits), turned into an
/// AES-128 key with HKDF and SHA-256; secrets are in CBC mode with PKCS#7 padding.
namespace vellumo::secretCipherModule {

inline constexpr std::size_t pairSize = 128; ///< bytes of each half of a key pair
inline constexpr std::size_t blockSize = 16; ///< bytes of a key and of an initial vector

/// Each answers 0, or -1, after any fault of the library.
struct Functions {
    /// Fills both halves of a new key pair, in network order. 1 when it is made.
    int (*makePair)(unsigned char *secretHalf, unsigned char *openHalf);
    /// The key that this secret half has in common with the other side's open half. 0 also when
    /// that one is out of range.
    int (*agree)(const unsigned char *secretHalf, const unsigned char *peer, std::size_t peerSize,
                 unsigned char *key);
    /// Makes an initial vector and fills `sealed`, which has room for a block more than `size`;
    /// the number of its bytes, or -1.
    int (*encrypt)(const unsigned char *key, unsigned char *vector, const unsigned char *plain,
                   int size, unsigned char *sealed);
    /// `plain` has room for a block more than `size`; the number of its bytes, or -1.
    int (*decrypt)(const unsigned char *key, const unsigned char *vector,
                   const unsigned char *sealed, int size, unsigned char *plain);
};

/// Name of the one function that is looked up: a Find. It identifies this version of Functions:
/// when that changes, so does the name.
inline constexpr const char *function = "vellumo_secret_cipher_1";

using Find = const Functions *(*)();

} // namespace vellumo::secretCipherModule
