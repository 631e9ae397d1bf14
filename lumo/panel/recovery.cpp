#include "panel/recovery.h"

#include "editor/storedstate.h"
#include "module/globals.h"
#include "panel/choicebox.h"
#include "program/words.h"
#include "undo/history.h"
#include "widgets/messagebox.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

using namespace prog;

namespace lumo {

namespace {

constexpr int keepAfterMs = 2000;

std::optional<Project> projectIn(const QString& path) {
    mendo::FileProblem ignored;
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(path, &ignored);
    return text ? projectFrom(text->value()) : std::nullopt;
}

}  // namespace

Recovery::Recovery(StoredState* stored, QWidget* page) : QObject(page), stored_(stored), page_(page) {
    timer_.setSingleShot(true);
    timer_.setInterval(keepAfterMs);
    connect(&timer_, &QTimer::timeout, this, &Recovery::onTimer);
    connect(stored, &StoredState::touched, this, &Recovery::onTouched);
    connect(stored, &StoredState::changed, this, &Recovery::onStored);
    connect(History::instance(), &History::changed, this, &Recovery::onHistory);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &Recovery::keep);
    QTimer::singleShot(0, this, &Recovery::offerAtStart);
}

Recovery::~Recovery() {
    delete question_;
}

// --- Keeping --------------------------------------------------------------------------------------

void Recovery::setProjectPath(const QString& path) {
    removeOwn();
    path_ = path;
    isEdited_ = false;
    isLeft_ = false;
    timer_.stop();
    offers_.clear();
}

bool Recovery::isUnsaved() {
    if (path_.isEmpty()) {
        return isEdited_ && m(key::program)->size() > 0;
    }
    stored_->check();
    const bool isGone = !stored_->isStored() && m(key::program)->size() > 0 && mendo::isMissing(path_);
    return stored_->isEdited() || isGone;
}

void Recovery::discard() {
    timer_.stop();
    removeOwn();
    isLeft_ = true;
}

void Recovery::onTouched() {
    if (lumo_recovery && !timer_.isActive()) {
        timer_.start();
    }
}

void Recovery::onHistory() {
    isEdited_ = isEdited_ || History::instance()->next(History::Way::Undo);
    isLeft_ = false;
    onTouched();
}

void Recovery::onStored() {
    if (stored_->isStored()) {
        removeOwn();
    }
}

void Recovery::onTimer() {
    if (isRunning()) {
        timer_.start();
    } else {
        keep();
    }
}

void Recovery::keep() {
    if (!lumo_recovery || isLeft_) {
        return;
    }
    if (!isUnsaved()) {
        removeOwn();
        return;
    }
    const QString file = recoveryFile(path_);
    const QByteArray program = programText();
    if (file == ownFile_ && program == written_) {
        return;
    }
    const QString before = giveWay(file) ? QString() : ownFile_;
    mendo::FileProblem problem;
    if (mendo::writeFile(file, recoveryText(path_, program), {}, &problem)) {
        if (!before.isEmpty() && before != file) {
            QFile::remove(before);
        }
        ownFile_ = file;
        written_ = program;
        isToldFault_ = false;
    } else if (!isToldFault_) {
        isToldFault_ = true;
        emit m()->fileProblem(problem);
    }
}

/// Moves a file of an earlier crash, about which the operator has not decided, out of the way. Whether there
/// was one.
bool Recovery::giveWay(const QString& file) const {
    if (file == ownFile_ || !QFile::exists(file)) {
        return false;
    }
    const QString older = olderRecoveryFile(path_);
    QFile::remove(older);
    QFile::rename(file, older);
    return true;
}

void Recovery::removeOwn() {
    if (!ownFile_.isEmpty()) {
        QFile::remove(ownFile_);
        ownFile_.clear();
        written_.clear();
    }
}

// --- Offering -------------------------------------------------------------------------------------

void Recovery::offer() {
    if (lumo_recovery) {
        offers_ = QStringList{recoveryFile(path_), olderRecoveryFile(path_)};
        offerNext();
    }
}

/// A project that was opened meanwhile has had its own offer.
void Recovery::offerAtStart() {
    if (lumo_recovery && path_.isEmpty() && !question_) {
        offers_ = recoveryFilesHere();
        offerNext();
    }
}

void Recovery::offerNext() {
    while (!offers_.isEmpty() && !question_) {
        const QString file = offers_.takeFirst();
        if (mendo::isMissing(file)) {
            continue;
        }
        const std::optional<Recovered> recovered = readRecovery(file);
        if (!recovered) {
            setAside(file);
            continue;
        }
        const Project stored = projectIn(projectOfRecovery(file)).value_or(Project());
        if (stored.statements == recovered->project.statements &&
            stored.toolset == recovered->project.toolset) {
            QFile::remove(file);  // was saved
            continue;
        }
        ask(file, *recovered, changedLines(stored.statements, recovered->project.statements));
    }
}

/// Keeps a damaged file under another name, so that it is told once.
void Recovery::setAside(const QString& file) const {
    const QString kept = file + QLatin1String(".damaged");
    QFile::remove(kept);
    const bool isKept = QFile::rename(file, kept);
    showMessage(QMessageBox::Warning, tr("提示"),
                tr("恢复文件已损坏，不能使用：%1").arg(QFileInfo(isKept ? kept : file).fileName()));
}

void Recovery::ask(const QString& file, const Recovered& recovered, int lines) {
    const QString path = projectOfRecovery(file);
    const QString time = recovered.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const QString name = path.isEmpty() ? tr("无文件的程序") : QStringLiteral("“%1”").arg(projectName(path));
    const bool isOutdated = recovered.isOutdated(path);
    QString text = tr("%1 有未保存的更改：%2，更改了 %3 行。").arg(name, time).arg(lines);
    if (isOutdated) {
        text += QLatin1Char('\n') + tr("工程文件在那之后又被更改，恢复将放弃那些更改。");
    }
    text += QLatin1Char('\n') + tr("要恢复吗？");
    Choice choice{tr("恢复未保存的更改"), text, {tr("恢复"), tr("放弃"), tr("以后再说")}, isOutdated ? 2 : 0};
    const Project project = recovered.project;
    question_ = askChoice(this, page_, choice,
                          [this, file, project](int answer) { answered(file, project, answer); });
}

void Recovery::answered(const QString& file, const Project& project, int answer) {
    enum Answer { Restore, Discard };
    if (answer == Restore && !isRunning()) {
        const QString path = projectOfRecovery(file);
        emit restored(path, project);
        ownFile_ = file;
        isEdited_ = true;
        onTouched();
        return;
    }
    if (answer == Discard) {
        QFile::remove(file);
    }
    question_ = nullptr;
    offerNext();
}

}  // namespace lumo
