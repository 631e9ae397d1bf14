#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>

namespace lumo {

/// Tells whether the program and the tool set of the tree are what the project file holds.
///
/// It compares contents, a moment after the last change, so that a change that was taken back counts
/// as none and a file that somebody else wrote is noticed. It only reads.
class StoredState : public QObject {
    Q_OBJECT
public:
    explicit StoredState(QObject* parent = nullptr);

    /// The project file; empty when no project is open, then everything counts as stored.
    void setProjectPath(const QString& path);
    [[nodiscard]] bool hasFile() const { return !path_.isEmpty(); }
    [[nodiscard]] bool isStored() const { return isStored_; }
    /// The program may have changed.
    void touch();
    /// Compares now.
    void check();
    /// The program was just saved as the project file. Without comparing: a run is about to begin.
    void saved();

signals:
    void changed();

private:
    /// Digests of what a project holds; no tool set in the file: an empty digest.
    struct Digest {
        QByteArray statements;
        QByteArray toolset;
    };
    void setStored(bool stored);
    void readFile();
    [[nodiscard]] static Digest digest(const QJsonValue& document);

    QString path_;
    QDateTime fileTime_;
    qint64 fileSize_ = -1;
    Digest file_;
    bool isStored_ = true;
    QTimer rest_;
};

}  // namespace lumo
