#include "editor/linefield.h"

#include "editor/programtable.h"
#include "editor/rowview.h"
#include "editor/statementtext.h"
#include "program/statement.h"
#include "program/words.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/fieldanswer.h"
#include "widgets/fieldlimits.h"

using namespace prog;

namespace lumo {

QLatin1String fieldName(const ModuleObject* statement, LineField field) {
    const auto ifPresent = [statement](QLatin1String name) {
        return statement->hasCmobj(name) ? name : QLatin1String();
    };
    switch (field) {
        case LineField::Speed:
            return ifPresent(statement->c(field::type)->getString() == statement::open ? field::weldspeed
                                                                                       : field::speed);
        case LineField::Zone:
            return ifPresent(field::zone);
        case LineField::Note:
            return statement->isNull() ? QLatin1String() : field::note;
        case LineField::None:
            break;
    }
    return {};
}

LineEntry::LineEntry(ModuleObject* statement, LineField field, QWidget* parent)
    : QLineEdit(parent),
      statement_(statement),
      field_(field),
      name_(fieldName(statement, field)),
      range_(entryRange(statement->c(field::type)->getString(), name_)) {
    setText(statement->c(name_)->getString());
    setAccessibleName(caption());
    if (field == LineField::Note) {
        return;
    }
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (name_ == field::speed) {
        setValidator(new SpeedValidator(this));
    } else {
        allowOnlyDigits(this);
    }
    if (field == LineField::Zone) {
        limitToZone(this);
    }
    answer_ = new FieldAnswer(this, range_);
    answer_->nameIt(caption());
    connect(answer_, &FieldAnswer::answered, this, &LineEntry::answered);
}

QString LineEntry::caption() const {
    switch (field_) {
        case LineField::Speed:
            return tr("速度");
        case LineField::Zone:
            return tr("转弯区");
        default:
            return tr("备注");
    }
}

bool LineEntry::isTaken() const {
    return !answer_ || answer_->isTaken();
}

bool LineEntry::isInProgram() const {
    return statement_ && statement_->pmobj() == ProgramTable::program();
}

QString LineEntry::shownText() const {
    return answer_ ? answer_->shownText() : text();
}

bool LineEntry::isChanged() const {
    return statement_ && shownText() != statement_->c(name_)->getString();
}

void LineEntry::tellIn(QLabel* note) {
    if (answer_) {
        answer_->tellIn(note);
    }
}

void LineEntry::revert() {
    if (statement_) {
        setText(statement_->c(name_)->getString());
        if (answer_) {
            answer_->keep();
        }
    }
}

bool LineEntry::store(RowView* list) {
    if (!isTaken() || !isInProgram()) {
        return false;
    }
    if (text() == statement_->c(name_)->getString()) {
        return true;
    }
    const int row = statement_->indexInPmobj();
    {
        const Edit edit(EditedList::Program,
                        steptext::lineEdited(row, type2cn(statement_->c(field::type)->getString())));
        Edit::touch(statement_);
        // As the line's own page and dialog write them: a weld speed is kept as text.
        const bool isWhole = name_ == field::speed || name_ == field::zone;
        statement_->set(list, name_, isWhole ? QVariant(text().toInt()) : QVariant(text()));
    }
    list->changeStatement(row);
    revert();
    return true;
}

}  // namespace lumo
