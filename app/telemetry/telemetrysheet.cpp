#include "app/telemetry/telemetrysheet.h"

#include "app/cell/segmentedcontrol.h"
#include "app/fileproblem.h"
#include "app/telemetry/telemetrytext.h"
#include "look/scale.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace app {

namespace {

using telemetry::Settings;

constexpr int cardPx = 760;
constexpr int periodMs = 500;
constexpr int mostPort = 65535;
constexpr int columns = 2;

QLabel* makeCaption(const QString& text) {
    auto* caption = new QLabel(text);
    caption->setProperty("caption", true);
    caption->setWordWrap(true);
    return caption;
}

}  // namespace

TelemetrySheet::TelemetrySheet(const Settings& settings, std::function<telemetry::LinkStatus()> status,
                               QWidget* over)
    : Sheet(QStringLiteral("telemetrySheet"), tr("遥测（MQTT）"), over),
      settings_(settings),
      status_(std::move(status)),
      on_(new SegmentedControl(QStringLiteral("btnTelemetry"), {tr("关"), tr("开")})),
      tls_(new SegmentedControl(QStringLiteral("btnTelemetryTls"), {tr("不加密"), QStringLiteral("TLS")})) {
    setCardWidth(cardPx);
    on_->setCurrent(settings.isOn ? 1 : 0);
    on_->setQuiet(0);
    tls_->setCurrent(settings.tls ? 1 : 0);
    addFields();
    hint_ = addText({});
    hint_->setProperty("caption", true);
    state_ = addText({});
    state_->setObjectName(QStringLiteral("lblTelemetryState"));
    answer_ = addText({});
    answer_->setObjectName(QStringLiteral("lblTelemetryAnswer"));
    answer_->setProperty("refused", true);
    const QAbstractButton* const store = addButton(QStringLiteral("btnTelemetryStore"), tr("保存"), true);
    connect(store, &QAbstractButton::clicked, this, &TelemetrySheet::store);
    connect(on_, &SegmentedControl::clicked, on_, &SegmentedControl::setCurrent);
    connect(tls_, &SegmentedControl::clicked, this, [this](int index) { setTls(index == 1); });
    for (const QLineEdit* const field : {host_, port_, cell_, user_, password_}) {
        connect(field, &QLineEdit::textChanged, this, &TelemetrySheet::showHints);
    }
    connect(&timer_, &QTimer::timeout, this, &TelemetrySheet::refresh);
    timer_.start(periodMs);
    accept(settings);
}

void TelemetrySheet::addFields() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(look::px(16));
    grid->setVerticalSpacing(look::px(4));
    addBeside(grid, tr("向 MQTT 服务器报告单元状态"), on_);
    addBeside(grid, tr("连接"), tls_);
    host_ = addField(grid, QStringLiteral("edtTelemetryHost"), tr("服务器地址"), settings_.host);
    port_ = addField(grid, QStringLiteral("edtTelemetryPort"), tr("端口"), QString::number(settings_.port));
    port_->setValidator(new QIntValidator(1, mostPort, port_));
    cell_ = addField(grid, QStringLiteral("edtTelemetryCell"), tr("单元名称"), settings_.cell);
    caFile_ = addField(grid, QStringLiteral("edtTelemetryCa"), tr("CA 证书文件（空：系统信任的机构）"),
                       settings_.caFile);
    user_ = addField(grid, QStringLiteral("edtTelemetryUser"), tr("用户（空：不登录）"), settings_.user);
    password_ = addField(grid, QStringLiteral("edtTelemetryPassword"), tr("密码"), {});
    password_->setEchoMode(QLineEdit::Password);
    certificate_ = addField(grid, QStringLiteral("edtTelemetryCertificate"), tr("客户端证书文件（可空）"),
                            settings_.certificateFile);
    key_ = addField(grid, QStringLiteral("edtTelemetryKey"), tr("客户端私钥文件（可空）"), settings_.keyFile);
    content()->addLayout(grid);
}

/// The next place of the grid: a caption, below it what it names.
void TelemetrySheet::addBeside(QGridLayout* grid, const QString& caption, QWidget* field) {
    const int place = grid->count() / 2;
    const int row = place / columns * 2;
    grid->addWidget(makeCaption(caption), row, place % columns, Qt::AlignBottom);
    grid->addWidget(field, row + 1, place % columns);
    grid->setColumnStretch(place % columns, 1);
}

QLineEdit* TelemetrySheet::addField(QGridLayout* grid, const QString& name, const QString& caption,
                                    const QString& text) {
    auto* field = new QLineEdit(text);
    field->setObjectName(name);
    field->setAccessibleName(caption);
    addBeside(grid, caption, field);
    return field;
}

/// A port that is the usual one stays the usual one.
void TelemetrySheet::setTls(bool used) {
    const int usual = tls_->current() == 1 ? Settings::tlsPort : Settings::plainPort;
    tls_->setCurrent(used ? 1 : 0);
    if (port_->text().toInt() == usual) {
        port_->setText(QString::number(used ? Settings::tlsPort : Settings::plainPort));
    }
    showHints();
}

Settings TelemetrySheet::typed() const {
    Settings settings = settings_;
    settings.isOn = on_->current() == 1;
    settings.tls = tls_->current() == 1;
    settings.host = host_->text().trimmed();
    settings.port = port_->text().toInt();
    settings.cell = cell_->text().trimmed();
    settings.user = user_->text();
    settings.caFile = caFile_->text().trimmed();
    settings.certificateFile = certificate_->text().trimmed();
    settings.keyFile = key_->text().trimmed();
    if (settings.user.isEmpty() || !password_->text().isEmpty()) {
        settings.password = password_->text();
    }
    return settings;
}

/// Whether the password that is set would go to another broker, or unencrypted where it was not.
bool TelemetrySheet::goesElsewhere(const Settings& settings) const {
    const bool isKept = !settings.password.isEmpty() && password_->text().isEmpty();
    return isKept && (settings.host != settings_.host || settings.port != settings_.port ||
                      (settings_.tls && !settings.tls));
}

void TelemetrySheet::store() {
    const Settings settings = typed();
    if (const auto flaw = settings.flaw()) {
        answer_->setText(flawText(*flaw));
    } else if (goesElsewhere(settings)) {
        answer_->setText(tr("连接已更改，请重新输入密码"));
    } else {
        emit storeAsked(settings);
        return;
    }
    answer_->show();
}

void TelemetrySheet::accept(const Settings& settings) {
    settings_ = settings;
    password_->clear();
    password_->setPlaceholderText(settings.password.isEmpty() ? QString() : tr("已设置，留空不变"));
    answer_->hide();
    showHints();
    refresh();
}

void TelemetrySheet::refuse(const mendo::FileProblem& problem) {
    answer_->setText(problemText(problem, problem.file));
    answer_->show();
}

/// Under which topics, and what others could read.
void TelemetrySheet::showHints() {
    const Settings settings = typed();
    Settings named = settings;
    named.cell = settings.cell.isEmpty() ? tr("单元名称") : settings.cell;
    QString hint = tr("主题：%1…").arg(named.root());
    if (settings.exposesPassword()) {
        hint += QLatin1Char('\n') + tr("密码将以明文通过网络传输。请使用 TLS。");
    }
    hint_->setText(hint);
}

void TelemetrySheet::refresh() {
    const telemetry::LinkStatus status = status_();
    const bool isOn = status.state != telemetry::LinkStatus::State::Off;
    state_->setText(isOn ? tr("%1  ·  已发送 %2，已被更新内容取代 %3")
                               .arg(linkText(status))
                               .arg(status.sent)
                               .arg(status.replaced)
                         : linkText(status));
}

}  // namespace app
