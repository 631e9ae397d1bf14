#pragma once

#include "app/results/runresult.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <memory>
#include <optional>

namespace app {

/// The results of the last runs, one file each in a folder, so that a damaged file costs one run and a run is
/// on the disk whole or not at all. Files are read when somebody looks at them.
class RunHistory : public QObject {
    Q_OBJECT
public:
    static constexpr int mostRuns = 1000;
    static constexpr int mostUnsaved = 20;

    /// `folder` is made with the first run.
    explicit RunHistory(const QString& folder, QObject* parent = nullptr);
    /// The one in the user's data folder.
    static QString defaultFolder();

    /// A result, newest first from 0. Nothing when its file cannot be read or is damaged.
    [[nodiscard]] std::optional<RunResult> at(int row) const;
    /// The name of the file of a result; empty while it could not be written.
    [[nodiscard]] QString fileName(int row) const;
    [[nodiscard]] int count() const { return entries_.size(); }

    /// Writes a result to the folder and deletes the oldest ones beyond mostRuns. When it cannot be written
    /// the host's file service reports it, and the result is kept in memory and written with the next one.
    void add(const RunResult& result);
    /// Reads the folder again: another panel may have added to it.
    void refresh();

signals:
    /// The rows have changed. `added`: by one new result, in row 0.
    void changed(bool added);

private:
    struct Entry {
        qint64 number = 0;
        QString file;                       ///< without the folder
        std::shared_ptr<RunResult> result;  ///< of one that could not be written
    };
    void list();
    void writeUnsaved();
    bool write(Entry* entry);
    void dropOldest();

    QString folder_;
    QVector<Entry> entries_;  ///< newest first
};

}  // namespace app
