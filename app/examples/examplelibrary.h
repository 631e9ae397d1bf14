#pragma once

#include <QString>
#include <QStringList>

namespace app {

/// The examples shipped with the panel. Each is a folder with settings and, mostly, a project of the same
/// name. The operator works on a copy in the user's data folder.
class ExampleLibrary {
public:
    /// `from` is the folder of the examples, `to` the folder for copies, made if missing.
    ExampleLibrary(const QString& from, const QString& to);
    /// The examples of the checkout or the installation.
    static ExampleLibrary ofThisProgram();

    /// Names of the examples, sorted.
    [[nodiscard]] QStringList names() const;
    /// An example's title in the panel's language.
    [[nodiscard]] static QString title(const QString& name);

    /// Copies an example's files unless they exist already, and returns the folder of the copy. On failure
    /// returns an empty string and writes the file's path to `error`.
    [[nodiscard]] QString copyForOperator(const QString& name, QString* error) const;
    /// The project in the copy of an example; empty when it has none.
    [[nodiscard]] QString project(const QString& name) const;

private:
    QString from_;
    QString to_;
};

}  // namespace app
