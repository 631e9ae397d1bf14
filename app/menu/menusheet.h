#pragma once

#include "app/sheet/sheet.h"

namespace app {

class ExampleLibrary;

/// The panel's menu: examples, language, first setup, handbook, support archive, backup. What starts the
/// panel anew is disabled while a program runs.
class MenuSheet : public Sheet {
    Q_OBJECT
public:
    MenuSheet(const ExampleLibrary& library, QWidget* over);

signals:
    void exampleChosen(const QString& name);
    /// "cn", "en" or "ru"; not the present one.
    void languageChosen(const QString& language);
    void rolesAsked();
    void setupAsked();
    void handbookAsked();
    void supportAsked();
    void backupAsked();
    void restoreAsked();

private:
    void addExamples(const ExampleLibrary& library);
    void addTools();
    void addLanguages();
    QAbstractButton* entry(const QString& name, const QString& text);
    void refresh();

    QList<QAbstractButton*> whileIdle_;  ///< disabled while a program runs
    QLabel* why_;
};

}  // namespace app
