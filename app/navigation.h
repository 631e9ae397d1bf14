#pragma once

#include <QWidget>

class QButtonGroup;
class QHBoxLayout;

namespace app {

/// A button for each page of the host's navigation; those of a group side by side. Follows pages that are
/// registered or removed later.
class Navigation : public QWidget {
    Q_OBJECT
public:
    explicit Navigation(QWidget* parent = nullptr);

    /// Reads the host's list of pages, which may not exist yet, and connects to it.
    void refresh();
    /// In a narrow window a long title takes two lines.
    void setNarrow(bool narrow);
    /// Checks the button of the page shown.
    void select(const QString& key);

signals:
    /// The operator has chosen the page whose module is registered under `key`.
    void chosen(const QString& key);

private:
    void refreshLater();
    void fit();

    QHBoxLayout* row_;
    QButtonGroup* buttons_;
    QString selected_;
    bool following_ = false;
    bool posted_ = false;
    bool narrow_ = false;
};

}  // namespace app
