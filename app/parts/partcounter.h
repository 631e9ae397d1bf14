#pragma once

#include <QDateTime>
#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QString>

namespace app {

/// The parts made with one project since its counter was reset.
struct PartCount {
    int made = 0;
    int target = 0;  ///< 0: none
    qint64 lastMs = 0;
    qint64 totalMs = 0;    ///< of all parts
    qint64 carriedMs = 0;  ///< run times of the part that was stopped and not yet finished
    QDateTime used;

    [[nodiscard]] qint64 meanMs() const { return made > 0 ? totalMs / made : 0; }
    /// "3 / 40", or "3" without a target.
    [[nodiscard]] QString figure() const;
};

/// Counts parts for each project file, in a JSON file, so that counts outlive the panel.
class PartCounter : public QObject {
    Q_OBJECT
public:
    static constexpr int mostProjects = 500;
    static constexpr int mostTarget = 99999;

    /// `file` is read at the first use and made with the first part.
    explicit PartCounter(const QString& file, QObject* parent = nullptr);
    /// The one in the user's data folder.
    static QString defaultFile();

    [[nodiscard]] PartCount of(const QString& project) const;

    /// A run of the project is over. `begins`: it began the part anew; otherwise it went on with one that was
    /// stopped. `finishes`: it reached the end of the program. A part takes as long as its runs together.
    void addRun(const QString& project, qint64 ms, bool begins, bool finishes);
    void setTarget(const QString& project, int target);
    /// Count and times; the target stays.
    void reset(const QString& project);

signals:
    void changed();
    /// The last part was the last one of the target.
    void targetReached(const QString& project, int target);

private:
    void read() const;
    void write();
    /// Reads the file again, because another panel may have counted, and returns the project's entry.
    PartCount& entry(const QString& project);

    QString file_;
    mutable QHash<QString, PartCount> counts_;
    mutable bool isRead_ = false;
};

}  // namespace app
