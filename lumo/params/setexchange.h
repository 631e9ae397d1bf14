#pragma once

#include "module/host.h"

#include <QJsonArray>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class QFileDialog;

namespace lumo {

/// Takes parameter sets out to a file and in from one, of the kind of the sets' own: a JSON array of sets.
///
/// A file with errors changes nothing, and what is wrong with which set is told. Sets whose names exist are
/// asked for: they replace the values of those, which keep their places, or come in under another name.
class SetExchange final : public QObject {
    Q_OBJECT
public:
    /// `page` is the parent of the dialogs, and the sender of all writes.
    explicit SetExchange(QWidget* page);

    void importSets();
    /// One set; a negative position means all.
    void exportSets(int set);

signals:
    /// Sets have come in. `lines`: those of the program that show other values now.
    void imported(const QList<int>& lines);

private:
    enum class Clash { Replace, KeepBoth };

    QFileDialog* choose(const QString& title, const QString& acceptText);
    void fileToImport(const QString& path);
    void fileToExport(const QString& path);
    void write();
    void ask(const QStringList& clashes, const QString& warnings);
    void takeIn(Clash clash);
    QMessageBox* question(const QString& title, const QString& text);

    QWidget* const page_;
    QPointer<QFileDialog> files_;
    QPointer<QMessageBox> question_;
    QJsonArray sets_;   ///< on their way in or out
    QString fileName_;  ///< that they are written to
};

}  // namespace lumo
