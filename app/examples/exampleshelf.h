#pragma once

#include <QString>
#include <QStringList>

namespace app {

/// The examples that come with the panel, each a folder with its settings and mostly a project of the
/// same name. The operator works on a copy in the folder of his data.
class ExampleShelf {
public:
    /// `from`: the folder that holds the examples; `to`: the folder for the copies, made where it is missing.
    ExampleShelf(const QString& from, const QString& to);
    /// Those of a checkout or an installation, with copies in the user's data folder.
    static ExampleShelf ofThisProgram();

    /// Names of the folders, sorted; none where no examples came along.
    [[nodiscard]] QStringList names() const;
    /// What the operator calls an example, in the panel's language.
    [[nodiscard]] static QString title(const QString& name);

    /// The folder with the operator's copy of an example; what he changed there stays, files that are missing
    /// are put back. Empty, with the file in `error`, when it cannot be made.
    [[nodiscard]] QString take(const QString& name, QString* error) const;
    /// The project of a taken example; empty for one that has none.
    [[nodiscard]] QString project(const QString& name) const;

private:
    QString from_;
    QString to_;
};

}  // namespace app
