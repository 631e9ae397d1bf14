#include "params/addparamdialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

AddParamDialog::AddParamDialog(QWidget* parent)
    : WatchedLineDialog(Closing::ByItself, parent),
      label_(new QLabel(tr("新建参数配置"), this)),
      lineEdit_(new QLineEdit(this)) {
    setObjectName(QStringLiteral("AddParamDialog"));
    setWindowTitle(QStringLiteral("Dialog"));
    setStyleSheet(QStringLiteral("QDialog{border: 4px solid #CCCCCC;}"));
    resize(335, 143);
    label_->setObjectName(QStringLiteral("label"));
    label_->setProperty("heading", "page");
    lineEdit_->setObjectName(QStringLiteral("lineEdit"));
    lineEdit_->setMinimumHeight(30);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal, this);
    box->setObjectName(QStringLiteral("buttonBox"));
    auto* rows = new QVBoxLayout(this);
    rows->setObjectName(QStringLiteral("verticalLayout"));
    rows->addWidget(label_);
    rows->addWidget(lineEdit_);
    rows->addWidget(box);
    setUpButtons(box, tr("确定"), tr("取消"));
    watch(lineEdit_);
}

QString AddParamDialog::name() const {
    return lineEdit_->text();
}

void AddParamDialog::propose(const QString& name) {
    lineEdit_->setText(name);
}

void AddParamDialog::settitlename(const QString& title) {
    label_->setText(title);
}
