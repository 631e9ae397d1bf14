#pragma once

#include "app/touch/entryfield.h"
#include "app/touch/pinyin.h"

#include <QWidget>

#include <memory>
#include <vector>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;

namespace app {

/// Keys for letters, digits and signs, in English, Russian and Chinese by pinyin. Takes no focus: it types
/// into the field, and a keyboard goes on working beside it.
class Keyboard : public QWidget {
    Q_OBJECT
public:
    /// Begins with the letters of a language ("en", "ru", "cn").
    explicit Keyboard(const QString& language, QWidget* parent = nullptr);
    ~Keyboard() override;

    /// Types into this field from now on.
    void begin(const EntryField& field);
    /// Leaves the field as it is; letters that have not become words are dropped.
    void end();
    /// Of the letters that are shown now.
    [[nodiscard]] QString language() const;

    QSize sizeHint() const override;

signals:
    /// The operator has finished with the field, by Enter or the key that hides the keyboard.
    void done();
    /// The operator wants no keyboard any more.
    void switchedOff();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Shift { Off, Once, Locked };

    QPushButton* addKey(QHBoxLayout* row, const QString& name, int share);
    QHBoxLayout* addRow();
    void makeHead();
    void makeRows();
    void makeLastRow();
    void fillRows();
    void fit();
    void type(const QString& letter);
    void erase();
    void enter();
    void space();
    void turnShift();
    void turnLanguage();
    void turnDigits();
    void move(int key);
    [[nodiscard]] bool writesWords() const;
    void showWords(const QString& typed);
    void choose(int word);
    void takeTyped();
    void refresh();

    EntryField field_;
    int layout_;
    bool digits_ = false;
    Shift shift_ = Shift::Off;
    QString typed_;  ///< letters that are to become words
    std::unique_ptr<Pinyin> pinyin_;

    QLabel* caption_;
    QLabel* name_;
    QToolButton* off_;
    std::vector<QHBoxLayout*> rows_;
    std::vector<QPushButton*> keys_;
    std::vector<std::vector<QPushButton*>> letters_;  ///< of each row, as many as any layout needs
    std::vector<QPushButton*> words_;
    QPushButton* shiftKey_ = nullptr;
    QPushButton* digitsKey_ = nullptr;
    QPushButton* languageKey_ = nullptr;
    QPushButton* spaceKey_ = nullptr;
};

}  // namespace app
