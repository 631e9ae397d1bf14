#pragma once

#include "editor/programwidget.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "params/addparamdialog.h"
#include "support/executorbench.h"
#include "support/text.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

namespace test {

/// The package's page in a panel, in a working directory of its own.
class PageBench : public ExecutorBench {
public:
    PageBench() { renew(); }
    ~PageBench() override { page.reset(); }

    /// As in a new process: no project, an empty program, an empty folder.
    void renew() {
        clear();
        makePage();
    }
    /// The same without a page.
    void clear() {
        reset();
        page.reset();
        LumoWidget::filePath.clear();
        isEnable_moveorder = false;
        isnew_pWgt = false;
        hand_or_signalbing = 0;
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
        folder = std::make_unique<QTemporaryDir>();
        QDir::setCurrent(folder->path());
        problems.clear();
        ScriptedRobot::setPower("off");
    }
    void makePage() {
        instantiatedCenterWidget()->resize(1184, 704);  // with a column of tools
        page = std::make_unique<LumoWidget>();
        instantiatedCenterWidget()->addWidget(page.get());
        instantiatedCenterWidget()->setCurrentWidget(page.get());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }

    /// The first visible widget of this kind and name; null when there is none.
    template <class Widget>
    Widget* find(const char* name = nullptr) const {
        const auto widgets = instantiatedCenterWidget()->findChildren<Widget*>(QLatin1String(name));
        const auto seen =
            std::find_if(widgets.begin(), widgets.end(), [](auto* w) { return w->isVisible(); });
        return seen == widgets.end() ? nullptr : *seen;
    }
    void click(const char* name) const {
        auto* button = find<QAbstractButton>(name);
        QVERIFY2(button, name);
        test::click(button);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);  // runs start from the event loop
    }
    void answerName(const QString& name) const {
        auto* dialog = find<AddParamDialog>();
        QVERIFY(dialog);
        QTest::keyClicks(dialog->findChild<QLineEdit*>(), name);
        clickOk(dialog);
    }
    void answerFile(const QString& name) {
        auto* dialog = find<QFileDialog>();
        QVERIFY(dialog);
        auto* line = child<QLineEdit>(dialog, "fileNameEdit");
        time.settle();  // until the dialog has the focus; otherwise it completes the text
        QVERIFY(line->hasFocus());
        QTest::keyClicks(line, name);
        QTest::keyClick(line, Qt::Key_Return);
        time.settle();
    }
    void openFile(const QString& name) {
        click("btnOpen");
        answerFile(name);
    }

    static QStringList types() {
        QStringList result;
        for (const ModuleObject* statement : m("lumo.program")->cmobjs()) {
            result << statement->c("type")->getString();
        }
        return result;
    }
    QString shownProject() const { return child<QLabel>(page.get(), "lblProject")->text(); }
    /// The editor's table; other pages have one of the same name.
    QTableWidget* programTable() const {
        return page->findChild<ProgramWidget*>()->findChild<QTableWidget*>();
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<LumoWidget> page;
    QSignalSpy problems{m(), &mendo::ModuleManager::fileProblem};  ///< reports of the host's file service
};

}  // namespace test
