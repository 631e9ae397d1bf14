#pragma once

#include <QStringList>
#include <QWidget>

class QAbstractButton;
class QButtonGroup;

namespace app {

/// Buttons in a row or a column, one of which is checked. A click only emits clicked(); setCurrent() checks a
/// button.
class SegmentedControl : public QWidget {
    Q_OBJECT
public:
    /// The object name of a button is `name` followed by its index.
    SegmentedControl(const QString& name, const QStringList& texts, QWidget* parent = nullptr);
    SegmentedControl(const QString& name, const QStringList& texts, Qt::Orientation orientation,
                     QWidget* parent = nullptr);

    /// -1: none is checked.
    void setCurrent(int index);
    int current() const;
    QAbstractButton* button(int index) const;
    void setText(int index, const QString& text);
    /// A choice that is off: grey, not blue, while it is checked.
    void setQuiet(int index);
    /// Whether a button is there; one that is not cannot be chosen.
    void setChoiceShown(int index, bool shown);

signals:
    void clicked(int index);

private:
    QButtonGroup* buttons_;
    int current_ = 0;
};

}  // namespace app
