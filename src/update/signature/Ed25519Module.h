// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What the module that checks signatures offers: a shared object of its own, so that only who
/// checks one loads the cryptographic library.
namespace vellumo::ed25519Module {

/// Name of the one function. Changes with its signature, so that a mismatch is not found.
inline constexpr const char *function = "vellumo_ed25519_verify_1";

/// 1 when the 64 bytes of `signature` were made over exactly this message with the secret half of
/// the 32 bytes of `key`, else 0, also after any fault of the library.
using Verify = int (*)(const unsigned char *key, const unsigned char *signature,
                       const unsigned char *message, std::size_t messageSize);

} // namespace vellumo::ed25519Module
