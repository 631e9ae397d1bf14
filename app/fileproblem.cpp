#include "app/fileproblem.h"

#include <QCoreApplication>

namespace app {

namespace {

struct Known {
    const char* reason;  ///< as the package, the file service, Qt or the system says it; %1 is a file
    const char* text;
};

const Known kReasons[] = {
    {"Permission denied", QT_TRANSLATE_NOOP("FileProblem", "没有权限")},
    {"No space left on device", QT_TRANSLATE_NOOP("FileProblem", "磁盘已满")},
    {"Read-only file system", QT_TRANSLATE_NOOP("FileProblem", "磁盘只读")},
    {"No such file or directory", QT_TRANSLATE_NOOP("FileProblem", "文件或文件夹不存在")},
    {"Is a directory", QT_TRANSLATE_NOOP("FileProblem", "这是文件夹，不是文件")},
    {"Disk quota exceeded", QT_TRANSLATE_NOOP("FileProblem", "磁盘配额已用完")},
    {"Input/output error", QT_TRANSLATE_NOOP("FileProblem", "磁盘读写错误")},
    {"File too large", QT_TRANSLATE_NOOP("FileProblem", "文件过大")},
    {"unterminated object", QT_TRANSLATE_NOOP("FileProblem", "对象没有结束，或缺少逗号")},
    {"unterminated array", QT_TRANSLATE_NOOP("FileProblem", "数组没有结束，或缺少逗号")},
    {"unterminated string", QT_TRANSLATE_NOOP("FileProblem", "字符串没有结束")},
    {"missing name separator", QT_TRANSLATE_NOOP("FileProblem", "名称后缺少冒号")},
    {"missing value separator", QT_TRANSLATE_NOOP("FileProblem", "两个值之间缺少逗号")},
    {"object is missing after a comma", QT_TRANSLATE_NOOP("FileProblem", "逗号后缺少内容")},
    {"illegal value", QT_TRANSLATE_NOOP("FileProblem", "无效的值")},
    {"illegal number", QT_TRANSLATE_NOOP("FileProblem", "无效的数字")},
    {"invalid termination by number", QT_TRANSLATE_NOOP("FileProblem", "文件以数字结束")},
    {"invalid escape sequence", QT_TRANSLATE_NOOP("FileProblem", "字符串中有无效的转义字符")},
    {"invalid UTF8 string", QT_TRANSLATE_NOOP("FileProblem", "文字编码不是UTF-8")},
    {"too deeply nested document", QT_TRANSLATE_NOOP("FileProblem", "嵌套层数过多")},
    {"too large document", QT_TRANSLATE_NOOP("FileProblem", "文件过大")},
    {"garbage at the end of the document", QT_TRANSLATE_NOOP("FileProblem", "文件末尾有多余内容")},
    {"the file holds no list", QT_TRANSLATE_NOOP("FileProblem", "文件内容不是列表")},
    {"the file in its place is damaged and cannot be kept",
     QT_TRANSLATE_NOOP("FileProblem", "原文件已损坏，且无法保留副本")},
    {"there is no such file", QT_TRANSLATE_NOOP("FileProblem", "没有此文件")},
    {"the file holds no project", QT_TRANSLATE_NOOP("FileProblem", "文件内容不是工程")},
    {"the file holds settings, no project", QT_TRANSLATE_NOOP("FileProblem", "文件内容是设置，不是工程")},
    {"the file in its place is no project and cannot be kept",
     QT_TRANSLATE_NOOP("FileProblem", "原文件不是工程，且无法保留副本")},
    {"Existing file %1 is not writable", QT_TRANSLATE_NOOP("FileProblem", "文件受写保护")},
};

/// What a system's error follows.
const Known kBeginnings[] = {
    {"the folder could not be synced: ", QT_TRANSLATE_NOOP("FileProblem", "无法确认已写入磁盘：")},
};

/// Whether the reason is that of the pattern, of whatever file.
bool isOf(const QString& pattern, const QString& reason) {
    const int file = pattern.indexOf(QLatin1String("%1"));
    return file < 0 ? reason == pattern
                    : reason.startsWith(pattern.left(file)) && reason.endsWith(pattern.mid(file + 2));
}

/// Qt gives its reasons in English or, where it has a catalogue, in the panel's language.
bool isSaid(const Known& known, const QString& reason) {
    if (isOf(QLatin1String(known.reason), reason))
        return true;
    for (const char* context : {"QJsonParseError", "QIODevice", "QSaveFile"}) {
        if (isOf(QCoreApplication::translate(context, known.reason), reason))
            return true;
    }
    return false;
}

QString inPanelLanguage(const Known& known) {
    return QCoreApplication::translate("FileProblem", known.text);
}

}  // namespace

bool FileProblem::operator==(const FileProblem& other) const {
    return file == other.file && line == other.line && column == other.column && reason == other.reason;
}

QString localReason(const QString& reason) {
    for (const Known& known : kReasons) {
        if (isSaid(known, reason))
            return inPanelLanguage(known);
    }
    for (const Known& known : kBeginnings) {
        const QLatin1String beginning(known.reason);
        if (reason.startsWith(beginning))
            return inPanelLanguage(known) + localReason(reason.mid(beginning.size()));
    }
    return reason;
}

QString problemText(const FileProblem& problem, const QString& shownFile) {
    const QString reason = localReason(problem.reason);
    if (problem.line <= 0)
        return QCoreApplication::translate("FileProblem", "%1：%2").arg(shownFile, reason);
    return QCoreApplication::translate("FileProblem", "%1 第%2行第%3列：%4")
        .arg(shownFile, QString::number(problem.line), QString::number(problem.column), reason);
}

}  // namespace app
