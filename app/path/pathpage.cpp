#include "app/path/pathpage.h"

#include "app/path/pathlegend.h"
#include "app/path/pathview.h"
#include "app/path/seamtrack.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace app {

namespace {

constexpr double zoomStep = 1.5;
constexpr int buttonHeight = 48;

QPushButton* makeButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setMinimumSize(buttonHeight, buttonHeight);
    return button;
}

QString mm(double metres) {
    return QString::number(metres * prog::mmPerM, 'f', 1);
}

}  // namespace

PathPage::PathPage(SeamTrack* seams, const workcell::PackageFlags& package, QWidget* parent)
    : QWidget(parent),
      seams_(seams),
      package_(package),
      arm_(kordservice()->dataNode(prog::key::jointCount)->getInt()),
      view_(new PathView(seams)),
      selection_(new QLabel),
      seam_(new QLabel) {
    selection_->setObjectName(QStringLiteral("lblPathLine"));
    seam_->setObjectName(QStringLiteral("lblSeam"));
    auto* line = new QHBoxLayout;
    line->setContentsMargins(10, 0, 10, 0);
    line->addWidget(selection_, 1);
    line->addWidget(seam_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 4);
    column->setSpacing(4);
    column->addWidget(makeButtons());
    column->addWidget(view_, 1);
    column->addLayout(line);
    column->addWidget(new PathLegend);
    connect(&program_, &ProgramFollower::changed, this, [this] {
        if (isVisible()) {
            layOut();
        }
    });
    connect(&program_, &ProgramFollower::replaced, view_, &PathView::fit);
    connect(m(prog::key::executeState), &mendo::ModuleObject::changed, this, &PathPage::onState);
    connect(seams, &SeamTrack::changed, this, &PathPage::showSeam);
    showSeam();
}

QWidget* PathPage::makeButtons() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 6, 8, 2);
    QPushButton* const fit = makeButton(QStringLiteral("btnFit"), tr("全部显示"));
    QPushButton* const larger = makeButton(QStringLiteral("btnLarger"), QStringLiteral("+"));
    QPushButton* const smaller = makeButton(QStringLiteral("btnSmaller"), QStringLiteral("−"));
    QPushButton* const clear = makeButton(QStringLiteral("btnClearSeam"), tr("清除焊缝"));
    larger->setAccessibleName(tr("放大"));
    smaller->setAccessibleName(tr("缩小"));
    for (QPushButton* button : {fit, larger, smaller}) {
        row->addWidget(button);
    }
    row->addStretch(1);
    row->addWidget(clear);
    connect(fit, &QPushButton::clicked, view_, &PathView::fit);
    connect(larger, &QPushButton::clicked, view_, [this] { view_->zoom(zoomStep); });
    connect(smaller, &QPushButton::clicked, view_, [this] { view_->zoom(1 / zoomStep); });
    connect(clear, &QPushButton::clicked, seams_, &SeamTrack::clear);
    return bar;
}

void PathPage::followEditor(const QWidget* editor) {
    editor_ = editor;
    connect(editor, SIGNAL(findingsChanged()), this, SLOT(onFindings()));
    table_ = editor->findChild<QAbstractItemView*>(QStringLiteral("tableWidget"));
    if (table_) {
        connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                &PathPage::showSelection);
        showSelection();
    }
}

void PathPage::onFindings() {
    if (isVisible() && impossibleLines() != impossible_) {
        layOut();
    }
}

/// A station's program that runs has none: it would not have been started.
QSet<int> PathPage::impossibleLines() const {
    QSet<int> lines;
    if (editor_ && !showsStation_) {
        const QVariantList found = editor_->property("impossibleLines").toList();
        for (const QVariant& line : found) {
            lines.insert(line.toInt());
        }
    }
    return lines;
}

void PathPage::showEvent(QShowEvent* event) {
    program_.setFollowing(true);
    layOut();
    QWidget::showEvent(event);
}

void PathPage::hideEvent(QHideEvent* event) {
    program_.setFollowing(false);
    QWidget::hideEvent(event);
}

bool PathPage::stationRuns() const {
    return package_.mode() == prog::runmode::byStation &&
           m(prog::key::executeState)->getString() == prog::word::busy;
}

void PathPage::layOut() {
    showsStation_ = stationRuns();
    const prog::RunProgram program(showsStation_ ? m(prog::key::stationProgram) : program_.program());
    impossible_ = impossibleLines();
    view_->setMoves(layOutPath(program, arm_, postureNow(), impossible_));
    showSelection();
}

void PathPage::onState() {
    if (isVisible() && showsStation_ != stationRuns()) {
        layOut();
    }
}

void PathPage::showSelection() {
    QSet<int> lines;
    if (showsStation_) {
        view_->setSelected(lines);
        selection_->setText(tr("工位程序"));
        return;
    }
    if (table_) {
        const QModelIndexList rows = table_->selectionModel()->selectedIndexes();
        for (const QModelIndex& row : rows) {
            lines.insert(row.row());
        }
    }
    view_->setSelected(lines);
    QString text;
    for (const PathMove& move : view_->moves()) {
        if (lines.size() == 1 && lines.contains(move.line)) {
            text = describe(move);
        }
    }
    selection_->setText(text);
}

QString PathPage::describe(const PathMove& move) const {
    const QString line = tr("第 %1 行").arg(move.line + 1);
    if (move.impossible) {
        return line + QStringLiteral(": ") + tr("无法运动");
    }
    if (move.path.size() == 1) {
        return line + QStringLiteral(": ") + tr("路径起点");
    }
    const QString kind = move.weld ? tr("焊接") : tr("空程");
    return line + QStringLiteral(": %1, ").arg(kind) + tr("%1 mm").arg(mm(move.length()));
}

void PathPage::showSeam() {
    seam_->setText(tr("已焊 %1 mm").arg(mm(seams_->length())));
}

}  // namespace app
