#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QIODevice;
class QWidget;

namespace app {

/// Asks for a file and writes it whole. Nothing holds a run up: dialogs are opened and answer later.
class ResultExport : public QObject {
    Q_OBJECT
public:
    /// Writes the content; false on failure.
    using Write = std::function<bool(QIODevice*)>;

    /// The dialogs belong to `page`, which must outlive it.
    explicit ResultExport(QWidget* page);

    /// Offers a name in the working directory. A file that is there is written over after a question.
    void ask(const QString& name, const Write& write);
    /// Writes without a question. Shows a message on failure.
    void writeTo(const QString& file, const Write& write);

signals:
    void written(const QString& file);

private:
    void confirm(const QString& file, const Write& write);

    QWidget* page_;
};

}  // namespace app
