#include "app/fileproblem.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <optional>

namespace app {

namespace {

struct Known {
    const char* reason;  ///< as the package, the file service, Qt or the system says it; %1, %2: anything
    const char* text;
};

const Known reasonRows[] = {
    // Those that hold another reason come first.
    {"%1; no port is in use", QT_TRANSLATE_NOOP("FileProblem", "%1；所有端口均已停用")},
    {"%1; faults in %2 more records", QT_TRANSLATE_NOOP("FileProblem", "%1；另有%2条记录有错误")},
    {"no JSON: %1", QT_TRANSLATE_NOOP("FileProblem", "文件格式错误：%1")},
    {"the folder could not be synced: %1", QT_TRANSLATE_NOOP("FileProblem", "无法确认已写入磁盘：%1")},
    {"Permission denied", QT_TRANSLATE_NOOP("FileProblem", "没有权限")},
    {"No space left on device", QT_TRANSLATE_NOOP("FileProblem", "磁盘已满")},
    {"Read-only file system", QT_TRANSLATE_NOOP("FileProblem", "磁盘只读")},
    {"No such file or directory", QT_TRANSLATE_NOOP("FileProblem", "文件或文件夹不存在")},
    {"Is a directory", QT_TRANSLATE_NOOP("FileProblem", "这是文件夹，不是文件")},
    {"file to open is a directory", QT_TRANSLATE_NOOP("FileProblem", "这是文件夹，不是文件")},
    {"this is no plain file", QT_TRANSLATE_NOOP("FileProblem", "这不是普通文件")},
    {"Disk quota exceeded", QT_TRANSLATE_NOOP("FileProblem", "磁盘配额已用完")},
    {"Input/output error", QT_TRANSLATE_NOOP("FileProblem", "磁盘读写错误")},
    {"File too large", QT_TRANSLATE_NOOP("FileProblem", "文件过大")},
    {"expected a value", QT_TRANSLATE_NOOP("FileProblem", "此处应为值")},
    {"expected a digit", QT_TRANSLATE_NOOP("FileProblem", "此处应为数字")},
    {"expected a key in quotes", QT_TRANSLATE_NOOP("FileProblem", "此处应为带引号的名称")},
    {"expected a colon", QT_TRANSLATE_NOOP("FileProblem", "名称后缺少冒号")},
    {"expected a comma or a closing brace", QT_TRANSLATE_NOOP("FileProblem", "对象没有结束，或缺少逗号")},
    {"expected a comma or a closing bracket", QT_TRANSLATE_NOOP("FileProblem", "数组没有结束，或缺少逗号")},
    {"expected the end of a string", QT_TRANSLATE_NOOP("FileProblem", "字符串没有结束")},
    {"expected the end of the file", QT_TRANSLATE_NOOP("FileProblem", "文件末尾有多余内容")},
    {"expected less nesting", QT_TRANSLATE_NOOP("FileProblem", "嵌套层数过多")},
    {"holds no array and no object", QT_TRANSLATE_NOOP("FileProblem", "文件内容既不是数组也不是对象")},
    {"illegal value", QT_TRANSLATE_NOOP("FileProblem", "无效的值")},
    {"illegal number", QT_TRANSLATE_NOOP("FileProblem", "无效的数字")},
    {"invalid escape sequence", QT_TRANSLATE_NOOP("FileProblem", "字符串中有无效的转义字符")},
    {"invalid UTF8 string", QT_TRANSLATE_NOOP("FileProblem", "文字编码不是UTF-8")},
    {"too deeply nested document", QT_TRANSLATE_NOOP("FileProblem", "嵌套层数过多")},
    {"too large document", QT_TRANSLATE_NOOP("FileProblem", "文件过大")},
    {"the file holds no list of records", QT_TRANSLATE_NOOP("FileProblem", "文件内容不是记录列表")},
    {"there are %1 rows for %2 ports", QT_TRANSLATE_NOOP("FileProblem", "共有%1行，应为%2个端口")},
    {"this is no record", QT_TRANSLATE_NOOP("FileProblem", "这不是记录")},
    {"%1 is no number", QT_TRANSLATE_NOOP("FileProblem", "%1不是数字")},
    {"%1 is no text", QT_TRANSLATE_NOOP("FileProblem", "%1不是文字")},
    {"%1 is no object", QT_TRANSLATE_NOOP("FileProblem", "%1不是对象")},
    {"%1 is neither true nor false", QT_TRANSLATE_NOOP("FileProblem", "%1既不是true也不是false")},
    {"'type' is missing", QT_TRANSLATE_NOOP("FileProblem", "缺少'type'")},
    {"'type' is not %1", QT_TRANSLATE_NOOP("FileProblem", "'type'不是%1")},
    {"the file in its place is damaged and cannot be kept",
     QT_TRANSLATE_NOOP("FileProblem", "原文件已损坏，且无法保留副本")},
    {"there is no such file", QT_TRANSLATE_NOOP("FileProblem", "没有此文件")},
    {"the file holds no project", QT_TRANSLATE_NOOP("FileProblem", "文件内容不是工程")},
    {"the file holds settings, no project", QT_TRANSLATE_NOOP("FileProblem", "文件内容是设置，不是工程")},
    {"unknown statement type %1", QT_TRANSLATE_NOOP("FileProblem", "未知的语句类型%1")},
    {"the file in its place holds something else and cannot be kept",
     QT_TRANSLATE_NOOP("FileProblem", "原文件是其他内容，且无法保留副本")},
    {"Existing file %1 is not writable", QT_TRANSLATE_NOOP("FileProblem", "文件受写保护")},
};

/// What stands for %1 and %2 in a reason; nothing when it is not of that pattern.
std::optional<QStringList> argumentsIn(const QString& reason, const QString& pattern) {
    static const QRegularExpression place(QStringLiteral("\\\\%\\d"));
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(place, QStringLiteral("(.+)"));
    const QRegularExpressionMatch match =
        QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(reason);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    return match.capturedTexts().mid(1);
}

/// Qt gives its reasons in English or, where it has a catalogue, in the panel's language.
std::optional<QStringList> argumentsOf(const QString& reason, const Known& known) {
    if (auto arguments = argumentsIn(reason, QLatin1String(known.reason))) {
        return arguments;
    }
    for (const char* context : {"QJsonParseError", "QIODevice", "QSaveFile"}) {
        if (auto arguments = argumentsIn(reason, QCoreApplication::translate(context, known.reason))) {
            return arguments;
        }
    }
    return std::nullopt;
}

/// An argument may be a reason itself.
QString filled(QString text, const QStringList& arguments) {
    for (int number = arguments.size(); number > 0; --number) {
        text.replace(QStringLiteral("%%1").arg(number), localReason(arguments[number - 1]));
    }
    return text;
}

QString inPanelLanguage(const Known& known) {
    return QCoreApplication::translate("FileProblem", known.text);
}

}  // namespace

bool FileProblem::operator==(const FileProblem& other) const {
    return file == other.file && line == other.line && column == other.column && reason == other.reason;
}

QString localReason(const QString& reason) {
    for (const Known& known : reasonRows) {
        if (const auto arguments = argumentsOf(reason, known)) {
            return filled(inPanelLanguage(known), *arguments);
        }
    }
    return reason;
}

QString problemText(const FileProblem& problem, const QString& shownFile) {
    const QString reason = localReason(problem.reason);
    if (problem.line <= 0) {
        return QCoreApplication::translate("FileProblem", "%1：%2").arg(shownFile, reason);
    }
    return QCoreApplication::translate("FileProblem", "%1 第%2行第%3列：%4")
        .arg(shownFile, QString::number(problem.line), QString::number(problem.column), reason);
}

}  // namespace app
