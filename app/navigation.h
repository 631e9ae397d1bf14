#pragma once

#include <QWidget>

class QButtonGroup;
class QHBoxLayout;

namespace app {

/// A button for each page in the host's navigation, those of a group side by side. Pages that are
/// registered or removed later come and go.
class Navigation : public QWidget {
    Q_OBJECT
public:
    /// The host's list of pages may not exist yet.
    explicit Navigation(QWidget* parent = nullptr);

    /// Reads the list again, and follows it from then on.
    void refresh();
    /// Marks the page of a key as the one that is shown.
    void select(const QString& key);
    /// The key of the first page; empty when there is none.
    QString firstKey() const;

signals:
    /// The operator wants the page whose module is registered under `key`.
    void chosen(const QString& key);

private:
    void refreshLater();

    QHBoxLayout* row_;
    QButtonGroup* buttons_;
    QString selected_;
    bool following_ = false;
    bool posted_ = false;
};

}  // namespace app
