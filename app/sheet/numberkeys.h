#pragma once

#include <QWidget>

class QLineEdit;

namespace app {

/// Touch keys 0 to 9 and a key that deletes, which write into a field; a keyboard works, too.
class NumberKeys : public QWidget {
    Q_OBJECT
public:
    explicit NumberKeys(QWidget* parent = nullptr);

    /// The keys write here from now on. The field must outlive them or be replaced.
    void writeTo(QLineEdit* field) { field_ = field; }

private:
    void press(const QString& key);

    QLineEdit* field_ = nullptr;
};

}  // namespace app
