#pragma once

#include <QByteArray>
#include <QStringView>

#include <span>

/// What reads bytes that may come from elsewhere or be damaged. Each target takes any bytes and
/// ends the program where the code under it breaks a promise; a fuzzer feeds it, and so does a
/// test with the small corpus in the tree.
namespace FuzzTargets {

struct Target {
    QStringView name; // as its folder in the corpus is called
    void (*run)(const QByteArray& bytes);
};

[[nodiscard]] std::span<const Target> all();

} // namespace FuzzTargets
