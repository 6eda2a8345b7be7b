// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Interface of the module that checks signatures. It is a shared object, so that only a check
/// loads the cryptographic library.
namespace vellumo::ed25519Module {

/// Name of the only exported function. It must change with the function's type, so that another
/// version is not resolved.
inline constexpr const char *function = "vellumo_ed25519_verify_1";

/// Returns 1 if the 64 bytes of `signature` were made over exactly this message with the secret key
/// that belongs to the 32 bytes of `key`; else 0, also on any error of the library.
using Verify = int (*)(const unsigned char *key, const unsigned char *signature,
                       const unsigned char *message, std::size_t messageSize);

} // namespace vellumo::ed25519Module
