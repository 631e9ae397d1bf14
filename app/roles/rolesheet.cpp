#include "app/roles/rolesheet.h"

#include "app/roles/rolekeeper.h"
#include "app/sheet/numberkeys.h"
#include "look/scale.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int columnPx = 240;  // of fields and texts beside the keys
constexpr int tickMs = 250;
constexpr qint64 msPerS = 1000, msPerMin = 60000;

QLineEdit* makeField(const QString& name) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setEchoMode(QLineEdit::Password);
    field->setMaxLength(RoleKeeper::mostDigits);
    field->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), field));
    field->setFixedWidth(look::px(columnPx));
    return field;
}

QLabel* makeText(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setFixedWidth(look::px(columnPx));
    return label;
}

QLabel* makeCaption(const QString& text) {
    QLabel* const label = makeText(text);
    label->setProperty("caption", true);
    return label;
}

QLabel* makeAnswer(const QString& name) {
    QLabel* const label = makeText({});
    label->setObjectName(name);
    label->setProperty("refused", true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

/// Fields with their captions at the left, keys at the right.
QLayout* beside(QVBoxLayout* fields, NumberKeys* keys) {
    fields->addStretch(1);
    fields->setSpacing(look::px(8));
    auto* row = new QHBoxLayout;
    row->addLayout(fields);
    row->addStretch(1);
    row->addWidget(keys);
    return row;
}

}  // namespace

// --- Entering the code ----------------------------------------------------------------------------

CodeSheet::CodeSheet(RoleKeeper* keeper, const QString& refused, QWidget* over)
    : Sheet(QStringLiteral("codeSheet"), tr("调试员密码"), over),
      keeper_(keeper),
      code_(makeField(QStringLiteral("edtCode"))),
      answer_(makeAnswer(QStringLiteral("lblCodeAnswer"))) {
    addText(refused.isEmpty() ? tr("端口、工位和手动控制设备仅供调试员使用。")
                              : tr("“%1”仅供调试员使用，请输入调试员密码。").arg(refused));
    auto* fields = new QVBoxLayout;
    fields->addWidget(code_);
    fields->addWidget(answer_);
    auto* keys = new NumberKeys;
    keys->writeTo(code_);
    content()->addLayout(beside(fields, keys));
    enter_ = addButton(QStringLiteral("btnCodeEnter"), tr("确定"), true);
    connect(enter_, &QAbstractButton::clicked, this, &CodeSheet::enter);
    connect(code_, &QLineEdit::returnPressed, this, &CodeSheet::enter);
    connect(keeper, &RoleKeeper::accepted, this, &Sheet::dismiss);
    connect(keeper, &RoleKeeper::refused, this, [this] {
        wasWrong_ = true;
        code_->clear();
        refresh();
    });
    tick_.setInterval(tickMs);
    connect(&tick_, &QTimer::timeout, this, &CodeSheet::refresh);
    setFocusProxy(code_);
    refresh();
}

void CodeSheet::enter() {
    if (!code_->text().isEmpty()) {
        keeper_->check(code_->text());
    }
}

void CodeSheet::refresh() {
    const qint64 waitMs = keeper_->waitMs();
    enter_->setEnabled(waitMs == 0);
    if (waitMs > 0) {
        answer_->setText(tr("密码错误次数过多，请等待 %1 秒").arg((waitMs + msPerS - 1) / msPerS));
        if (!tick_.isActive()) {
            tick_.start();
        }
    } else {
        tick_.stop();
        answer_->setText(wasWrong_ ? tr("密码错误") : QString());
    }
}

// --- Setting the code -----------------------------------------------------------------------------

NewCodeSheet::NewCodeSheet(RoleKeeper* keeper, QWidget* over)
    : Sheet(QStringLiteral("newCodeSheet"), tr("设置调试员密码"), over),
      keeper_(keeper),
      code_(makeField(QStringLiteral("edtNewCode"))),
      again_(makeField(QStringLiteral("edtNewCodeAgain"))),
      keys_(new NumberKeys),
      answer_(makeAnswer(QStringLiteral("lblNewCodeAnswer"))) {
    addText(
        tr("设置密码后，端口、工位和手动控制设备只对调试员开放。忘记密码时，由计算机管理员删除密码文件。"));
    auto* fields = new QVBoxLayout;
    fields->addWidget(makeCaption(
        tr("新密码（%1 至 %2 位数字）").arg(RoleKeeper::leastDigits).arg(RoleKeeper::mostDigits)));
    fields->addWidget(code_);
    fields->addWidget(makeCaption(tr("再次输入")));
    fields->addWidget(again_);
    fields->addWidget(answer_);
    keys_->writeTo(code_);
    content()->addLayout(beside(fields, keys_));
    store_ = addButton(QStringLiteral("btnCodeStore"), tr("设置"), true);
    connect(store_, &QAbstractButton::clicked, this, &NewCodeSheet::store);
    connect(again_, &QLineEdit::returnPressed, this, &NewCodeSheet::store);
    connect(code_, &QLineEdit::returnPressed, again_, [this] { again_->setFocus(); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now == code_ || now == again_) {
            keys_->writeTo(static_cast<QLineEdit*>(now));
        }
    });
    connect(keeper, &RoleKeeper::stored, this, [this](bool done) {
        if (done) {
            dismiss();
        } else {
            answer_->setText(tr("无法保存密码"));
            store_->setEnabled(true);
        }
    });
    setFocusProxy(code_);
}

void NewCodeSheet::store() {
    if (code_->text().size() < RoleKeeper::leastDigits) {
        answer_->setText(tr("密码太短"));
    } else if (code_->text() != again_->text()) {
        answer_->setText(tr("两次输入不一致"));
    } else {
        store_->setEnabled(false);
        keeper_->setCode(code_->text());
    }
}

// --- The session ----------------------------------------------------------------------------------

SessionSheet::SessionSheet(RoleKeeper* keeper, QWidget* over)
    : Sheet(QStringLiteral("sessionSheet"), tr("调试员"), over) {
    addText(tr("端口、工位和手动控制设备已开放。%1 分钟没有操作后自动退出。")
                .arg(RoleKeeper::sessionMs / msPerMin));
    const QAbstractButton* const change = addButton(QStringLiteral("btnCodeChange"), tr("更改密码"));
    const QAbstractButton* const remove = addButton(QStringLiteral("btnCodeRemove"), tr("取消密码"));
    const QAbstractButton* const leave = addButton(QStringLiteral("btnCodeLeave"), tr("退出"), true);
    connect(change, &QAbstractButton::clicked, this, &SessionSheet::newCodeAsked);
    connect(remove, &QAbstractButton::clicked, this, [this, keeper] {
        keeper->removeCode();
        dismiss();
    });
    connect(leave, &QAbstractButton::clicked, this, [this, keeper] {
        keeper->leave();
        dismiss();
    });
    connect(keeper, &RoleKeeper::changed, this, [this, keeper] {
        if (!keeper->isIntegrator()) {
            dismiss();
        }
    });
}

}  // namespace app
