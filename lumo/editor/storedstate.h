#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>

namespace lumo {

/// Tells whether the project file holds the program and the tool set of the tree.
///
/// It compares contents, some time after the last change and not while a laser may be on: undoing a change
/// makes the state stored again, and a file written by another program is noticed. It only reads.
class StoredState : public QObject {
    Q_OBJECT
    /// For programs that load the package.
    Q_PROPERTY(bool stored READ isStored)
public:
    explicit StoredState(QObject* parent = nullptr);

    /// The project file; empty for none: then everything counts as stored.
    void setProjectPath(const QString& path);
    [[nodiscard]] bool hasFile() const { return !path_.isEmpty(); }
    [[nodiscard]] bool isStored() const { return isStored_; }
    /// Whether the content is another one than when it was last stored: not where another program has changed
    /// the file. As of the last comparison.
    [[nodiscard]] bool isEdited() const { return isEdited_; }
    /// To be called when the program may have changed.
    void touch();
    /// Compares now.
    void check();
    /// To be called when the program was saved as the project file. Does not compare, because a run is about
    /// to begin.
    void saved();

signals:
    void changed();
    /// The program may have changed.
    void touched();

private:
    /// Digests of a project; that of the tool set is empty if there is none.
    struct Digest {
        QByteArray statements;
        QByteArray toolset;

        [[nodiscard]] bool operator==(const Digest& other) const {
            return statements == other.statements && toolset == other.toolset;
        }
    };
    void checkAtRest();
    void setStored(bool stored);
    void readFile();
    [[nodiscard]] static Digest digest(const QJsonValue& document);

    QString path_;
    QDateTime fileTime_;
    qint64 fileSize_ = -1;
    Digest file_;
    Digest base_;  ///< of the content when it was last found stored
    bool isStored_ = true;
    bool isEdited_ = false;
    QTimer rest_;
};

}  // namespace lumo
