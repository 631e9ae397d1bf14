#include "app/fileproblem.h"

#include <QCoreApplication>

namespace app {

namespace {

using mendo::FileProblem;
using Kind = FileProblem::Kind;

constexpr FileProblem::Wording words[] = {
    {Kind::NoSuchFile, QT_TRANSLATE_NOOP("FileProblem", "没有此文件")},
    {Kind::NoSuchFolder, QT_TRANSLATE_NOOP("FileProblem", "文件夹不存在")},
    {Kind::IsFolder, QT_TRANSLATE_NOOP("FileProblem", "这是文件夹，不是文件")},
    {Kind::NoPlainFile, QT_TRANSLATE_NOOP("FileProblem", "这不是普通文件")},
    {Kind::NoPermission, QT_TRANSLATE_NOOP("FileProblem", "没有权限")},
    {Kind::DiskFull, QT_TRANSLATE_NOOP("FileProblem", "磁盘已满")},
    {Kind::QuotaUsed, QT_TRANSLATE_NOOP("FileProblem", "磁盘配额已用完")},
    {Kind::DiskReadOnly, QT_TRANSLATE_NOOP("FileProblem", "磁盘只读")},
    {Kind::DiskFailed, QT_TRANSLATE_NOOP("FileProblem", "磁盘读写错误")},
    {Kind::FileTooLarge, QT_TRANSLATE_NOOP("FileProblem", "文件过大")},
    {Kind::OtherError, "%1"},
    {Kind::FolderNotSynced, QT_TRANSLATE_NOOP("FileProblem", "无法确认已写入磁盘")},
    {Kind::CannotKeep, QT_TRANSLATE_NOOP("FileProblem", "无法保留原文件的副本")},
    {Kind::NoValue, QT_TRANSLATE_NOOP("FileProblem", "此处应为值")},
    {Kind::NoDigit, QT_TRANSLATE_NOOP("FileProblem", "此处应为数字")},
    {Kind::NoKey, QT_TRANSLATE_NOOP("FileProblem", "此处应为带引号的名称")},
    {Kind::NoColon, QT_TRANSLATE_NOOP("FileProblem", "名称后缺少冒号")},
    {Kind::NoCommaOrBrace, QT_TRANSLATE_NOOP("FileProblem", "对象没有结束，或缺少逗号")},
    {Kind::NoCommaOrBracket, QT_TRANSLATE_NOOP("FileProblem", "数组没有结束，或缺少逗号")},
    {Kind::NoEndOfString, QT_TRANSLATE_NOOP("FileProblem", "字符串没有结束")},
    {Kind::NoEndOfFile, QT_TRANSLATE_NOOP("FileProblem", "文件末尾有多余内容")},
    {Kind::TooDeep, QT_TRANSLATE_NOOP("FileProblem", "嵌套层数过多")},
    {Kind::BadValue, QT_TRANSLATE_NOOP("FileProblem", "无效的值")},
    {Kind::BadNumber, QT_TRANSLATE_NOOP("FileProblem", "无效的数字")},
    {Kind::BadEscape, QT_TRANSLATE_NOOP("FileProblem", "字符串中有无效的转义字符")},
    {Kind::BadUtf8, QT_TRANSLATE_NOOP("FileProblem", "文字编码不是UTF-8")},
    {Kind::NoContainer, QT_TRANSLATE_NOOP("FileProblem", "文件内容既不是数组也不是对象")},
    {Kind::NoArray, QT_TRANSLATE_NOOP("FileProblem", "文件内容不是数组")},
    {Kind::NoRecordList, QT_TRANSLATE_NOOP("FileProblem", "文件内容不是记录列表")},
    {Kind::WrongRowCount, QT_TRANSLATE_NOOP("FileProblem", "共有%1行，应为%2个端口")},
    {Kind::NoRecord, QT_TRANSLATE_NOOP("FileProblem", "这不是记录")},
    {Kind::NoNumber, QT_TRANSLATE_NOOP("FileProblem", "'%1'不是数字")},
    {Kind::NoText, QT_TRANSLATE_NOOP("FileProblem", "'%1'不是文字")},
    {Kind::NoObject, QT_TRANSLATE_NOOP("FileProblem", "'%1'不是对象")},
    {Kind::NoTruthValue, QT_TRANSLATE_NOOP("FileProblem", "'%1'既不是true也不是false")},
    {Kind::FieldMissing, QT_TRANSLATE_NOOP("FileProblem", "缺少'%1'")},
    {Kind::FieldDiffers, QT_TRANSLATE_NOOP("FileProblem", "'%1'不是%2")},
    {Kind::NoProject, QT_TRANSLATE_NOOP("FileProblem", "文件内容不是工程")},
    {Kind::IsSettings, QT_TRANSLATE_NOOP("FileProblem", "文件内容是设置，不是工程")},
    {Kind::UnknownStatement, QT_TRANSLATE_NOOP("FileProblem", "未知的语句类型\"%1\"")},
    {Kind::UnknownField, QT_TRANSLATE_NOOP("FileProblem", "此处没有名为'%1'的项")},
    {Kind::LeastAboveMost, QT_TRANSLATE_NOOP("FileProblem", "'%1'的min大于max")},
    {Kind::OtherFault, "%1"},
    {Kind::NoPortInUse, QT_TRANSLATE_NOOP("FileProblem", "所有端口均已停用")},
    {Kind::MoreRecords, QT_TRANSLATE_NOOP("FileProblem", "另有%1条记录有错误")},
};
static_assert(FileProblem::isComplete(words));

QString translated(const char* text) {
    return QCoreApplication::translate("FileProblem", text);
}

QString textOf(const FileProblem::Reason& reason) {
    const QString text = translated(words[static_cast<int>(reason.kind)].text);
    return mendo::isSyntax(reason.kind)
               ? translated(QT_TRANSLATE_NOOP("FileProblem", "文件格式错误：%1")).arg(text)
               : reason.filled(text);
}

}  // namespace

QString problemText(const FileProblem& problem, const QString& shownFile) {
    const QString reasons = reasonText(problem);
    if (problem.place.line <= 0) {
        return translated(QT_TRANSLATE_NOOP("FileProblem", "%1：%2")).arg(shownFile, reasons);
    }
    return translated(QT_TRANSLATE_NOOP("FileProblem", "%1 第%2行第%3列：%4"))
        .arg(shownFile, QString::number(problem.place.line), QString::number(problem.place.column), reasons);
}

QString reasonText(const FileProblem& problem) {
    QStringList texts;
    for (const FileProblem::Reason& reason : problem.reasons) {
        texts.append(textOf(reason));
    }
    return texts.join(translated(QT_TRANSLATE_NOOP("FileProblem", "；")));
}

}  // namespace app
