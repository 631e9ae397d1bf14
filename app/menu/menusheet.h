#pragma once

#include "app/sheet/sheet.h"

class QGridLayout;

namespace app {

class ExampleLibrary;
class SegmentedControl;

/// The panel's menu: handbook, results, event log, first setup, roles, telemetry, backup, examples, size of
/// type and language. What starts the panel anew is disabled while a program runs.
class MenuSheet : public Sheet {
    Q_OBJECT
public:
    /// `factor`: the one that is chosen; 0: by the window's size.
    MenuSheet(const ExampleLibrary& library, double factor, QWidget* over);

signals:
    /// Results or event log (app/dock/docks.h).
    void dockAsked(const QString& dock);
    void exampleChosen(const QString& name);
    /// By what everything is to grow; 0: by the window's size.
    void factorChosen(double factor);
    /// "cn", "en" or "ru"; not the present one.
    void languageChosen(const QString& language);
    void rolesAsked();
    void telemetryAsked();
    void setupAsked();
    void handbookAsked();
    void supportAsked();
    void backupAsked();
    void restoreAsked();

private:
    void addTools();
    void addExamples(const ExampleLibrary& library);
    void addSizes(double factor);
    void addLanguages(QGridLayout* grid);
    void addTouch(QGridLayout* grid);
    static void addBeside(QGridLayout* grid, const QString& text, QWidget* choice);
    void addCaption(const QString& text);
    QAbstractButton* addEntry(QGridLayout* grid, const QString& name, const QString& icon,
                              const QString& text);
    bool fitsWindow(double factor) const;
    void refresh();

    QList<QAbstractButton*> whileIdle_;  ///< disabled while a program runs
    QLabel* why_;
};

}  // namespace app
