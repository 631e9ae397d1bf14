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
    {Kind::BadUtf8, QT_TRANSLATE_NOOP("FileProblem", "文字编码不是 UTF-8")},
    {Kind::NoContainer, QT_TRANSLATE_NOOP("FileProblem", "文件内容既不是数组也不是对象")},
    {Kind::NoArray, QT_TRANSLATE_NOOP("FileProblem", "文件内容不是数组")},
    {Kind::NoRecordList, QT_TRANSLATE_NOOP("FileProblem", "文件内容不是记录列表")},
    {Kind::WrongRowCount, QT_TRANSLATE_NOOP("FileProblem", "共有 %1 行，应为 %2 个端口")},
    {Kind::NoRecord, QT_TRANSLATE_NOOP("FileProblem", "这不是记录")},
    {Kind::NoNumber, QT_TRANSLATE_NOOP("FileProblem", "'%1' 不是数字")},
    {Kind::NoText, QT_TRANSLATE_NOOP("FileProblem", "'%1' 不是文字")},
    {Kind::NoObject, QT_TRANSLATE_NOOP("FileProblem", "'%1' 不是对象")},
    {Kind::NoTruthValue, QT_TRANSLATE_NOOP("FileProblem", "'%1' 既不是 true 也不是 false")},
    {Kind::FieldMissing, QT_TRANSLATE_NOOP("FileProblem", "缺少 '%1'")},
    {Kind::FieldDiffers, QT_TRANSLATE_NOOP("FileProblem", "'%1' 不是 %2")},
    {Kind::NoProject, QT_TRANSLATE_NOOP("FileProblem", "文件内容不是工程")},
    {Kind::IsSettings, QT_TRANSLATE_NOOP("FileProblem", "文件内容是设置，不是工程")},
    {Kind::UnknownStatement, QT_TRANSLATE_NOOP("FileProblem", "未知的语句类型“%1”")},
    {Kind::UnknownField, QT_TRANSLATE_NOOP("FileProblem", "此处没有名为 '%1' 的项")},
    {Kind::LeastAboveMost, QT_TRANSLATE_NOOP("FileProblem", "'%1' 的 min 大于 max")},
    {Kind::OtherFault, "%1"},
    {Kind::NoPortInUse, QT_TRANSLATE_NOOP("FileProblem", "所有端口均未启用")},
    {Kind::MoreRecords, QT_TRANSLATE_NOOP("FileProblem", "另有 %1 条记录有错误")},
};
static_assert(FileProblem::isComplete(words));

/// What the operator can do about it.
constexpr char chooseAnother[] = QT_TRANSLATE_NOOP("FileProblem", "请选择另一个文件，或检查名称。");
constexpr char giveFolder[] =
    QT_TRANSLATE_NOOP("FileProblem", "请恢复该文件夹，或用 --settings 指定另一个文件夹。");
constexpr char takePlainFile[] = QT_TRANSLATE_NOOP("FileProblem", "请移走它，并选择普通文件。");
constexpr char giveRights[] =
    QT_TRANSLATE_NOOP("FileProblem", "请给予当前用户读写此文件及其文件夹的权限，然后再保存。");
constexpr char makeRoom[] =
    QT_TRANSLATE_NOOP("FileProblem", "请腾出磁盘空间，然后再保存；在此之前更改只保存在面板中。");
constexpr char unlockDisk[] =
    QT_TRANSLATE_NOOP("FileProblem", "请换一个可写的磁盘，或解除写保护，然后再保存。");
constexpr char checkDisk[] = QT_TRANSLATE_NOOP("FileProblem", "请检查磁盘，并另存到其他磁盘。");
constexpr char divideFile[] = QT_TRANSLATE_NOOP("FileProblem", "请把它分成较小的文件。");
constexpr char tryAgain[] = QT_TRANSLATE_NOOP("FileProblem", "请再试一次；若仍失败，请检查磁盘和权限。");
constexpr char nothingLost[] =
    QT_TRANSLATE_NOOP("FileProblem", "原文件未被覆盖。请检查文件夹的权限和空间，然后再保存。");
constexpr char mendText[] =
    QT_TRANSLATE_NOOP("FileProblem", "请在文本编辑器中改正此处，或恢复备份；在此之前不使用此文件。");
constexpr char takeRightFile[] = QT_TRANSLATE_NOOP("FileProblem", "请选择正确的文件，或恢复备份。");
constexpr char mendField[] = QT_TRANSLATE_NOOP("FileProblem", "请改正此项，或在面板的页面上重新输入并保存。");
constexpr char assignPorts[] =
    QT_TRANSLATE_NOOP("FileProblem", "请在端口页分配端口并确认：文件将重新写入，原文件会保留。");
constexpr char deleteLine[] =
    QT_TRANSLATE_NOOP("FileProblem", "请删除此行或改正其类型；此工程可能来自更新的版本。");
constexpr char mendLimits[] = QT_TRANSLATE_NOOP("FileProblem", "请改正限值文件，下次运行时生效。");

constexpr FileProblem::Wording remedies[] = {
    {Kind::NoSuchFile, chooseAnother},   {Kind::NoSuchFolder, giveFolder},
    {Kind::IsFolder, takePlainFile},     {Kind::NoPlainFile, takePlainFile},
    {Kind::NoPermission, giveRights},    {Kind::DiskFull, makeRoom},
    {Kind::QuotaUsed, makeRoom},         {Kind::DiskReadOnly, unlockDisk},
    {Kind::DiskFailed, checkDisk},       {Kind::FileTooLarge, divideFile},
    {Kind::OtherError, tryAgain},        {Kind::FolderNotSynced, tryAgain},
    {Kind::CannotKeep, nothingLost},     {Kind::NoValue, mendText},
    {Kind::NoDigit, mendText},           {Kind::NoKey, mendText},
    {Kind::NoColon, mendText},           {Kind::NoCommaOrBrace, mendText},
    {Kind::NoCommaOrBracket, mendText},  {Kind::NoEndOfString, mendText},
    {Kind::NoEndOfFile, mendText},       {Kind::TooDeep, mendText},
    {Kind::BadValue, mendText},          {Kind::BadNumber, mendText},
    {Kind::BadEscape, mendText},         {Kind::BadUtf8, mendText},
    {Kind::NoContainer, takeRightFile},  {Kind::NoArray, takeRightFile},
    {Kind::NoRecordList, takeRightFile}, {Kind::WrongRowCount, assignPorts},
    {Kind::NoRecord, mendField},         {Kind::NoNumber, mendField},
    {Kind::NoText, mendField},           {Kind::NoObject, mendField},
    {Kind::NoTruthValue, mendField},     {Kind::FieldMissing, mendField},
    {Kind::FieldDiffers, mendField},     {Kind::NoProject, takeRightFile},
    {Kind::IsSettings, takeRightFile},   {Kind::UnknownStatement, deleteLine},
    {Kind::UnknownField, mendLimits},    {Kind::LeastAboveMost, mendLimits},
    {Kind::OtherFault, mendField},       {Kind::NoPortInUse, assignPorts},
    {Kind::MoreRecords, mendField},
};
static_assert(FileProblem::isComplete(remedies));

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
    return translated(QT_TRANSLATE_NOOP("FileProblem", "%1 第 %2 行第 %3 列：%4"))
        .arg(shownFile, QString::number(problem.place.line), QString::number(problem.place.column), reasons);
}

QString remedyText(const FileProblem& problem) {
    return problem.reasons.isEmpty()
               ? QString()
               : translated(remedies[static_cast<int>(problem.reasons.first().kind)].text);
}

QString reasonText(const FileProblem& problem) {
    QStringList texts;
    for (const FileProblem::Reason& reason : problem.reasons) {
        texts.append(textOf(reason));
    }
    return texts.join(translated(QT_TRANSLATE_NOOP("FileProblem", "；")));
}

}  // namespace app
