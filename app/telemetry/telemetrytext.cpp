#include "app/telemetry/telemetrytext.h"

#include <QCoreApplication>

namespace app {

namespace {

/// The context of the texts.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(app::TelemetryText)
};

QString reasonText(const telemetry::LinkStatus& status) {
    using Reason = telemetry::LinkStatus::Reason;
    switch (status.reason) {
        case Reason::NoLibrary:
            return Text::tr("缺少程序库 libmosquitto.so.1，请安装软件包 libmosquitto1");
        case Reason::UnknownHost:
            return Text::tr("找不到该地址");
        case Reason::Refused:
            return Text::tr("连接被拒绝");
        case Reason::NoAnswer:
            return Text::tr("服务器没有应答");
        case Reason::Lost:
            return Text::tr("服务器断开了连接");
        case Reason::BadLogin:
            return Text::tr("用户或密码错误");
        case Reason::NotAllowed:
            return Text::tr("服务器不允许此客户端");
        case Reason::Certificate:
            return Text::tr("证书不被信任");
        case Reason::Other:
        case Reason::None:
            break;
    }
    return status.words;
}

}  // namespace

QString linkText(const telemetry::LinkStatus& status) {
    using State = telemetry::LinkStatus::State;
    switch (status.state) {
        case State::Off:
            return Text::tr("已关闭");
        case State::Connecting:
            return Text::tr("正在连接");
        case State::Connected:
            return Text::tr("已连接");
        case State::Failed:
            break;
    }
    return Text::tr("无法连接：%1").arg(reasonText(status));
}

QString flawText(const telemetry::Flaw& flaw) {
    using Kind = telemetry::Flaw::Kind;
    switch (flaw.kind) {
        case Kind::NoHost:
            return Text::tr("请输入服务器地址");
        case Kind::BadPort:
            return Text::tr("端口应为 1 至 65535");
        case Kind::BadCell:
            return Text::tr("请输入单元名称，不含 / + #");
        case Kind::BadPrefix:
            return Text::tr("设置文件中的主题前缀无效");
        case Kind::PasswordWithoutUser:
            return Text::tr("有密码但没有用户");
        case Kind::FilesWithoutTls:
            return Text::tr("证书只用于 TLS 连接");
        case Kind::CertificateWithoutKey:
            return Text::tr("客户端证书和私钥必须同时填写");
        case Kind::NoFile:
            break;
    }
    return Text::tr("无法读取文件 %1").arg(flaw.argument);
}

}  // namespace app
