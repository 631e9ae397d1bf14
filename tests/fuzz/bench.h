#pragma once

#include "fuzz/memoryfile.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QJsonValue>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// Where inputs are read: a folder of its own, which is the working directory, and the package's data
/// tree as after a start with no settings files. One in a process, made for the first input.
class Bench {
public:
    Bench();

    /// Gives a file this content; it is one in memory, and under its very name found.
    void write(const QString& name, const QByteArray& content) const;
    /// Puts the files that were written into the folder, where they can be saved over.
    void moveToDisk() const;
    /// Leaves the folder empty.
    void clearDisk() const;
    /// Puts the package's tree back to what it is after a start.
    void renewTree() const;

private:
    QTemporaryDir folder_;
    QCoreApplication application_;
    mutable MemoryFiles files_;
};

/// What the reading of one input may take: 1 MiB and 200 times the input above what was held before,
/// at any moment, and one second of this thread. Whoever takes more is aborted.
class Budget {
public:
    explicit Budget(std::size_t inputBytes);
    ~Budget();
    Budget(const Budget&) = delete;
    Budget& operator=(const Budget&) = delete;

private:
    std::size_t inputBytes_;
    std::int64_t beganNs_;
};

/// Takes what was read: here only the reading matters.
template <typename... Values>
void use(const Values&...) {}

/// Aborts, saying what does not hold, when it does not.
void require(bool holds, const char* what);

/// Whether two values say the same: of an integer a tree holds as many digits as a double does, and Qt does
/// not compare objects whose names hold a zero character.
[[nodiscard]] bool isSame(const QJsonValue& one, const QJsonValue& other);

/// Whether this input is one of those, about one in `share`, that go through costly steps as well; every
/// one of them after `chooseAll`.
constexpr unsigned shareSaved = 1024;  ///< saving syncs a file and its folder
void chooseAll();
[[nodiscard]] bool isChosen(const QByteArray& input, unsigned share);

}  // namespace fuzz

/// What every target is: reads one input and uses what was read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
