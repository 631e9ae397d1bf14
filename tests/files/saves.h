#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace files {

/// One way in which the product writes a file, with documents that tell their generation.
struct Saving {
    QString name;
    QString file;        ///< in the working directory; a link leads to the file that `target` names
    QString target;      ///< where `file` is a symbolic link, else empty
    QByteArray foreign;  ///< what somebody typed into the file before the first save; empty for none
    std::function<void(int generation)> fill;  ///< puts a document into memory
    std::function<bool()> save;                ///< writes it, and says whether it did
    std::function<void()> load;                ///< reads it; empty where there is no reading of its own
    std::function<QByteArray()> memory;        ///< what is in memory now
};

/// Documents repeat after as many.
constexpr int generations = 8;

/// The package's tree, filled as at a start. Its folder, which stays the working directory, lives as
/// long as it.
class Product {
public:
    Product();
    ~Product();

    std::vector<Saving> savings() const;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

[[nodiscard]] QByteArray contentOf(const QString& file);
/// An empty working directory; then `content`, where there is any, in the file of `saving`.
void clearFolder();
void place(const Saving& saving, const QByteArray& content);
/// The bytes of each generation's file, saved undisturbed.
[[nodiscard]] std::vector<QByteArray> documentsOf(const Saving& saving);
/// Whether some file of the folder holds exactly `content`.
[[nodiscard]] bool isSomewhere(const QByteArray& content);
/// Files in the folder that nobody asked for.
[[nodiscard]] QStringList leftovers(const Saving& saving);

}  // namespace files
