#include "devices/setpoint.h"

#include "devices/signlabel.h"
#include "equipment/ports.h"
#include "widgets/fieldanswer.h"

#include <QDoubleSpinBox>
#include <QVBoxLayout>

namespace lumo {

SetPoint::SetPoint(I_PORT output, QLabel* caption, QDoubleSpinBox* field, QWidget* parent)
    : QWidget(parent),
      output_(output),
      field_(field),
      answer_(new FieldAnswer(field)),
      note_(new SignLabel(this)) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    note_->setWordWrap(true);
    caption->setWordWrap(true);
    caption->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    rows->addWidget(caption, 1);
    rows->addWidget(field);
    rows->addWidget(note_);
    connect(answer_, &FieldAnswer::answered, this, &SetPoint::refresh);
}

bool SetPoint::isTaken() const {
    return answer_->isTaken();
}

void SetPoint::refresh() {
    if (!answer_->isTaken()) {
        note_->show(Sign::Refused,
                    rangeText({field_->minimum(), field_->maximum(), "%", field_->decimals()}));
    } else if (!portEnabled(output_)) {
        note_->show(Sign::Locked, tr("端口未启用"));
    } else {
        note_->show(Sign::None, tr("当前输出 %1 %").arg(portPercent(output_), 0, 'f', 1));
    }
}

}  // namespace lumo
