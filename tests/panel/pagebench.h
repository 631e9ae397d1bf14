#pragma once

#include "editor/programwidget.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "params/addparamdialog.h"
#include "support/executorbench.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTest>

namespace test {

/// The page as the operator has it before him, in a working directory of its own.
class PageBench : public ExecutorBench {
public:
    PageBench() { renew(); }
    ~PageBench() override { page.reset(); }

    /// A process that has just begun: no project, empty program, an empty folder.
    void renew() {
        clear();
        makePage();
    }

    /// The same, before the page is made.
    void clear() {
        reset();
        page.reset();
        LumoWidget::filePath.clear();
        isEnable_moveorder = false;
        isnew_pWgt = false;
        hand_or_signalbing = 0;
        m(QStringLiteral("lumo.toolset"))->copyFrom(this, m(QStringLiteral("lumo.default.default_toolset")));
        folder = std::make_unique<QTemporaryDir>();
        QDir::setCurrent(folder->path());
        problems.clear();
        ScriptedRobot::setPower("off");
    }

    void makePage() {
        page = std::make_unique<LumoWidget>();
        instantiatedCenterWidget()->addWidget(page.get());
        instantiatedCenterWidget()->setCurrentWidget(page.get());
    }

    template <class Widget>
    Widget* find(const char* name = nullptr) const {
        for (Widget* widget : instantiatedCenterWidget()->findChildren<Widget*>(QLatin1String(name))) {
            if (widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }

    void click(const char* name) const {
        auto* button = find<QAbstractButton>(name);
        QVERIFY2(button, name);
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);  // runs are begun from the event loop
    }

    /// Types a name into the name dialog and answers it.
    void answerName(const QString& name, QDialogButtonBox::StandardButton with = QDialogButtonBox::Ok) const {
        auto* dialog = find<AddParamDialog>();
        QVERIFY(dialog);
        QTest::keyClicks(dialog->findChild<QLineEdit*>(), name);
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(with), Qt::LeftButton);
    }

    /// Types a file into the open dialog and accepts it.
    void answerFile(const QString& name) {
        auto* dialog = find<QFileDialog>();
        QVERIFY(dialog);
        auto* line = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        time.settle();  // the dialog gets the keyboard; without it, it completes what is typed
        QVERIFY(line->hasFocus());
        QTest::keyClicks(line, name);
        QTest::keyClick(line, Qt::Key_Return);
        time.settle();
    }

    static void write(const QString& name, const QByteArray& text) {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    static QByteArray content(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    static QStringList types() {
        QStringList result;
        for (const ModuleObject* statement : m(QStringLiteral("lumo.program"))->cmobjs()) {
            result << statement->c(QStringLiteral("type"))->getString();
        }
        return result;
    }
    QString shownProject() const { return page->findChild<QLabel*>(QStringLiteral("lblProject"))->text(); }
    /// The program's; other pages have a table of that name too.
    QTableWidget* programTable() const {
        return page->findChild<ProgramWidget*>()->findChild<QTableWidget*>();
    }
    int rows() const { return programTable()->rowCount(); }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<LumoWidget> page;
    /// Reports of the host's file service.
    QSignalSpy problems{m(), &mendo::ModuleManager::fileProblem};
};

}  // namespace test
