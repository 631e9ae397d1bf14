#include "widgets/fieldnote.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>

#include <algorithm>

namespace lumo {

namespace {

constexpr int signSize = 16;

/// The triangle at the beginning of a note's first line.
class NoteSign final : public QLabel {
public:
    explicit NoteSign(QLabel* note) : QLabel(note) {
        setObjectName(QStringLiteral("noteSign"));
        note->installEventFilter(this);
    }

    void show(NoteTone tone) {
        constexpr int gap = 6;
        const bool isShown = tone != NoteTone::Plain;
        const QRgb colour = tone == NoteTone::Refused ? look::red : look::amberInk;
        if (isShown) {
            setPixmap(look::picture(QStringLiteral("warn"), look::px(signSize), colour));
        }
        setVisible(isShown);
        note()->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        note()->setContentsMargins(isShown ? look::px(signSize + gap) : 0, 0, 0, 0);
        place();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == parent() && event->type() == QEvent::Resize) {
            place();
        }
        return false;
    }

private:
    [[nodiscard]] QLabel* note() const { return static_cast<QLabel*>(parentWidget()); }
    /// At the first line of a note whose text stands at its top.
    void place() {
        const int side = look::px(signSize);
        setGeometry(0, std::max(0, (note()->fontMetrics().height() - side) / 2), side, side);
    }
};

const char* nameOf(NoteTone tone) {
    switch (tone) {
        case NoteTone::Plain:
            return "plain";
        case NoteTone::Refused:
            return "refused";
        case NoteTone::Warned:
            return "warned";
    }
    return "plain";
}

/// Keeps a label in its place at the right end of a line, which is its parent.
class UnitPlace final : public QObject {
public:
    UnitPlace(QLineEdit* line, QLabel* unit) : QObject(unit), line_(line), unit_(unit) {
        line->installEventFilter(this);
        unit->installEventFilter(this);
        place();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::Resize ? watched == line_ : watched == unit_ && type == QEvent::FontChange) {
            place();
        }
        return false;
    }

private:
    void place() {
        constexpr int margin = 12;
        constexpr int gap = 6;
        unit_->ensurePolished();
        const int width = unit_->sizeHint().width();
        unit_->setGeometry(line_->width() - width - look::px(margin), 0, width, line_->height());
        line_->setTextMargins(0, 0, width + look::px(gap), 0);
    }

    QLineEdit* const line_;
    QLabel* const unit_;
};

}  // namespace

void restyle(QWidget* widget) {
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

void tellNote(QLabel* note, const QString& text, NoteTone tone) {
    note->setText(text);
    auto* sign = static_cast<NoteSign*>(
        note->findChild<QLabel*>(QStringLiteral("noteSign"), Qt::FindDirectChildrenOnly));
    const QString name = QLatin1String(nameOf(tone));
    if (note->property("note").toString() != name) {
        note->setProperty("note", name);
        restyle(note);
    }
    if (!sign && tone != NoteTone::Plain) {
        sign = new NoteSign(note);
    }
    if (sign) {
        sign->show(tone);
    }
}

void showUnit(QLineEdit* line, QLabel* unit) {
    unit->setProperty("note", "unit");
    unit->setAttribute(Qt::WA_TransparentForMouseEvents);
    unit->setParent(line);
    unit->show();
    line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    new UnitPlace(line, unit);
}

}  // namespace lumo
