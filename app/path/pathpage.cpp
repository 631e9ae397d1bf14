#include "app/path/pathpage.h"

#include "app/cell/segmentedcontrol.h"
#include "app/path/pathfoot.h"
#include "app/path/seamtrack.h"
#include "kord/kordservice.h"
#include "look/icon.h"
#include "look/scale.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>

namespace app {

namespace {

constexpr double zoomStep = 1.5;
constexpr int wideDock = 430;  // px at factor 1; room for a fourth choice
constexpr int slowMs = 60, restMs = 400;

}  // namespace

PathPage::PathPage(SeamTrack* seams, const workcell::PackageFlags& package, QWidget* parent)
    : QWidget(parent),
      seams_(seams),
      package_(package),
      arm_(kordservice()->dataNode(prog::key::jointCount)->getInt()),
      sights_(new SegmentedControl(QStringLiteral("pathSight"),
                                   {tr("立体"), tr("俯视"), tr("侧视"), tr("并列")})),
      view_(new PathView(seams, &arm_)),
      second_(new PathView(seams, &arm_)),
      foot_(new PathFoot(seams)) {
    setObjectName(QStringLiteral("pathPage"));
    setAttribute(Qt::WA_StyledBackground);
    second_->setObjectName(QStringLiteral("pathViewAbove"));
    second_->setSide(PathView::Side::Above);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeButtons());
    column->addWidget(view_, 1);
    column->addSpacing(1);
    column->addWidget(second_, 1);
    column->addWidget(foot_);
    later_.setSingleShot(true);
    later_.setInterval(restMs);
    connect(&later_, &QTimer::timeout, this, &PathPage::layOut);
    connect(&program_, &ProgramFollower::changed, this, &PathPage::onProgram);
    connect(&program_, &ProgramFollower::replaced, view_, &PathView::showWelds);
    connect(&program_, &ProgramFollower::replaced, second_, &PathView::showWelds);
    connect(m(prog::key::executeState), &mendo::ModuleObject::changed, this, &PathPage::onState);
    connect(m(prog::key::currentLine), &mendo::ModuleObject::changed, this, &PathPage::showSelection);
    connect(sights_, &SegmentedControl::clicked, this, [this](int sight) {
        isSightChosen_ = true;
        setSight(sight);
    });
    for (PathView* view : views()) {
        connect(view, &PathView::lineTapped, this, &PathPage::choose);
    }
    arrange();
    setSight(Space);
}

QToolButton* PathPage::makeButton(const QString& name, const QString& icon, const QString& text) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(look::icon(icon));
    button->setText(text);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolButtonStyle(text.isEmpty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
    buttons_ << button;
    return button;
}

QWidget* PathPage::makeButtons() {
    bar_ = new QWidget;
    bar_->setObjectName(QStringLiteral("pathBar"));
    auto* row = new QHBoxLayout(bar_);
    sights_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // takes what room is left
    row->addWidget(sights_, 1);
    QToolButton* const all = makeButton(QStringLiteral("btnFit"), QStringLiteral("fit"), tr("全部"));
    next_ = makeButton(QStringLiteral("btnPathNext"), QStringLiteral("zoom_seam"), tr("焊缝"));
    QToolButton* const smaller = makeButton(QStringLiteral("btnSmaller"), QStringLiteral("minus"), {});
    QToolButton* const larger = makeButton(QStringLiteral("btnLarger"), QStringLiteral("plus"), {});
    larger->setAccessibleName(tr("放大"));
    smaller->setAccessibleName(tr("缩小"));
    for (QToolButton* button : buttons_) {
        row->addWidget(button);
    }
    const auto eachView = [this](const auto& act) {
        for (PathView* view : views()) {
            act(view);
        }
    };
    connect(all, &QToolButton::clicked, this, [=] { eachView([](PathView* view) { view->showAll(); }); });
    connect(next_, &QToolButton::clicked, this, &PathPage::showNext);
    connect(larger, &QToolButton::clicked, this,
            [=] { eachView([](PathView* view) { view->zoom(zoomStep); }); });
    connect(smaller, &QToolButton::clicked, this,
            [=] { eachView([](PathView* view) { view->zoom(1 / zoomStep); }); });
    return bar_;
}

void PathPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        arrange();
    }
}

void PathPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void PathPage::arrange() {
    const bool isWide = width() >= look::px(wideDock);
    const int side = look::px(isWide ? 16 : 12);
    bar_->layout()->setContentsMargins(side, look::px(8), side, look::px(8));
    bar_->layout()->setSpacing(look::px(isWide ? 8 : 4));
    for (QToolButton* button : buttons_) {
        const bool hasWord = !button->text().isEmpty();
        button->setIconSize(QSize(1, 1) * look::px(hasWord ? 18 : 24));
        button->setMaximumHeight(look::px(48));
        button->setProperty("word", hasWord);
    }
    sights_->setChoiceShown(Both, isWide);
    foot_->setBrief(isWide);
    // Both where there is room for them, until the operator has chosen.
    const int sight = sights_->current();
    const bool isChosen = isSightChosen_ && (isWide || sight != Both);
    const int wanted = isChosen ? sight : (isWide ? Both : Space);
    if (wanted != sight) {
        setSight(wanted);
    }
}

void PathPage::setSight(int sight) {
    constexpr PathView::Side sides[] = {PathView::Side::Space, PathView::Side::Above, PathView::Side::Side,
                                        PathView::Side::Space};
    sights_->setCurrent(sight);
    view_->setSide(sides[sight]);
    second_->setVisible(sight == Both);
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

void PathPage::followSignals(const workcell::CellSignals* cellSignals) {
    foot_->followSignals(cellSignals);
}

// --- Program ------------------------------------------------------------------------------------

void PathPage::onProgram() {
    if (!isVisible()) {
        return;
    }
    if (isSlow_) {
        later_.start();
    } else {
        layOut();
    }
}

void PathPage::onFindings() {
    if (isVisible() && impossibleLines() != impossible_) {
        onProgram();
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
    later_.stop();
    QWidget::hideEvent(event);
}

bool PathPage::stationRuns() const {
    return package_.mode() == prog::runmode::byStation &&
           m(prog::key::executeState)->getString() == prog::word::busy;
}

void PathPage::layOut() {
    QElapsedTimer taken;
    taken.start();
    showsStation_ = stationRuns();
    const prog::RunProgram program(showsStation_ ? m(prog::key::stationProgram) : program_.program());
    impossible_ = impossibleLines();
    const auto moves =
        std::make_shared<const std::vector<PathMove>>(layOutPath(program, arm_, postureNow(), impossible_));
    for (PathView* view : views()) {
        view->setMoves(moves);
    }
    isSlow_ = taken.elapsed() > slowMs;
    showSelection();
}

void PathPage::onState() {
    foot_->setRunning(m(prog::key::executeState)->getString() == prog::word::busy);
    if (isVisible() && showsStation_ != stationRuns()) {
        layOut();
    } else {
        showSelection();
    }
}

// --- Chosen line --------------------------------------------------------------------------------

/// As a tap on its row: not while the table takes none.
void PathPage::choose(int line) {
    if (table_ && table_->isEnabled() && !showsStation_ && line < table_->model()->rowCount()) {
        const QModelIndex index = table_->model()->index(line, 1);
        table_->setCurrentIndex(index);
        table_->scrollTo(index);
    }
}

int PathPage::chosenLine() const {
    const QSet<int>& lines = view_->selected();
    return lines.size() == 1 ? *lines.begin() : -1;
}

void PathPage::showSelection() {
    const bool runs = m(prog::key::executeState)->getString() == prog::word::busy;
    QSet<int> lines;
    if (runs) {
        lines.insert(m(prog::key::currentLine)->getInt());
    } else if (table_) {
        const QModelIndexList rows = table_->selectionModel()->selectedRows();
        for (const QModelIndex& row : rows) {
            lines.insert(row.row());
        }
    }
    if (lines != view_->selected()) {
        showsSeam_ = false;
    }
    for (PathView* view : views()) {
        view->setSelected(lines);
    }
    foot_->show(showsStation_ ? m(prog::key::stationProgram) : program_.program(), view_->moves(),
                chosenLine());
    if (showsStation_ && chosenLine() < 0) {
        foot_->say(tr("工位程序"));
    }
    nameNext();
}

/// First the weld of the chosen line, then the line.
void PathPage::showNext() {
    const int line = chosenLine();
    const int seam = seamOf(view_->moves(), line);
    const bool toSeam = line < 0 || (seam >= 0 && !showsSeam_);
    for (PathView* view : views()) {
        if (line < 0) {
            view->showWelds();
        } else if (toSeam) {
            view->showSeam(seam);
        } else {
            view->showLine(line);
        }
    }
    showsSeam_ = toSeam && line >= 0;
    nameNext();
}

void PathPage::nameNext() {
    const int line = chosenLine();
    const bool toSeam = line < 0 || (seamOf(view_->moves(), line) >= 0 && !showsSeam_);
    next_->setText(toSeam ? tr("焊缝") : tr("行"));
}

}  // namespace app
