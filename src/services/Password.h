#pragma once

#include "services/FormProblem.h"

#include <QString>

#include <optional>

/// The start-up password. It guards the program, not the files: nothing is encrypted with it.
namespace Password {

/// What the profile keeps of a password.
struct Secret {
    QString hash; // "scrypt$N$r$p$" and the derived key in hexadecimal
    QString salt; // 16 random bytes in hexadecimal
};

/// Derives a secret with scrypt (RFC 7914; N 2^17, r 8, p 1: 128 MiB and some tenths of a
/// second, so that trying many passwords is slow). Nothing when the machine has no memory left.
[[nodiscard]] std::optional<Secret> makeSecret(const QString& password);

enum class Check {
    Fits,
    Wrong, // also when the secret has an unknown form
    CouldNotCheck, // not enough memory: says nothing about the password
};

/// Whether the password belongs to the secret.
[[nodiscard]] Check verify(const QString& password, const Secret& secret);

/// Seconds to wait before the next try: none for up to four failures, then 5, doubling up to 300.
int waitSecondsAfter(int failures);

enum class Field { Current, New, Repeated };

/// What is wrong with a new password and its repetition; nothing when it may be set.
std::optional<FormProblem<Field>> firstProblem(const QString& password, const QString& repeated);

} // namespace Password
