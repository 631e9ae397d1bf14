#pragma once

#include <QFrame>

class QLabel;

namespace app {

/// A column beside the package's page, or a page over it. With a title it has a bar with the title and a
/// button that closes it; without, its content has a bar of its own, look::px(64) high.
class Dock : public QFrame {
    Q_OBJECT
public:
    /// Takes ownership of `content`. The object name is "dock_" and the id.
    Dock(const QString& id, const QString& title, QWidget* content, QWidget* parent);

    QWidget* content() const { return content_; }

signals:
    void closeAsked();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeBar(const QString& title);
    void fit();

    QWidget* bar_ = nullptr;
    QWidget* content_;
};

}  // namespace app
