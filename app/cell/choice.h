#pragma once

#include <QStringList>
#include <QWidget>

class QButtonGroup;

namespace app {

/// A few buttons side by side, one of which is down: a choice that a thumb can make. A press only
/// asks; what is chosen is shown by setCurrent().
class Choice : public QWidget {
    Q_OBJECT
public:
    /// Buttons get the object name `name` and their index.
    Choice(const QString& name, const QStringList& texts, QWidget* parent = nullptr);

    void setCurrent(int index);
    int current() const;
    void setText(int index, const QString& text);

signals:
    void asked(int index);

private:
    QButtonGroup* buttons_;
    int current_ = 0;
};

}  // namespace app
