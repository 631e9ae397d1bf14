#include "json/fileproblem.h"

#include <cerrno>
#include <cstring>

namespace mendo {

namespace {

using Kind = FileProblem::Kind;

constexpr FileProblem::Wording words[] = {
    {Kind::NoSuchFile, "there is no such file"},
    {Kind::NoSuchFolder, "there is no such folder"},
    {Kind::IsFolder, "this is a folder"},
    {Kind::NoPlainFile, "this is no plain file"},
    {Kind::NoPermission, "permission denied"},
    {Kind::DiskFull, "the disk is full"},
    {Kind::QuotaUsed, "the disk quota is used up"},
    {Kind::DiskReadOnly, "the disk is read-only"},
    {Kind::DiskFailed, "the disk cannot be read or written"},
    {Kind::FileTooLarge, "the file is too large"},
    {Kind::OtherError, "%1"},
    {Kind::FolderNotSynced, "the folder could not be synced"},
    {Kind::CannotKeep, "the file in its place cannot be kept"},
    {Kind::NoValue, "expected a value"},
    {Kind::NoDigit, "expected a digit"},
    {Kind::NoKey, "expected a key in quotes"},
    {Kind::NoColon, "expected a colon"},
    {Kind::NoCommaOrBrace, "expected a comma or a closing brace"},
    {Kind::NoCommaOrBracket, "expected a comma or a closing bracket"},
    {Kind::NoEndOfString, "expected the end of a string"},
    {Kind::NoEndOfFile, "expected the end of the file"},
    {Kind::TooDeep, "expected less nesting"},
    {Kind::BadValue, "illegal value"},
    {Kind::BadNumber, "illegal number"},
    {Kind::BadEscape, "invalid escape sequence"},
    {Kind::BadUtf8, "invalid UTF8 string"},
    {Kind::NoContainer, "holds no array and no object"},
    {Kind::NoArray, "holds no array"},
    {Kind::NoRecordList, "the file holds no list of records"},
    {Kind::WrongRowCount, "there are %1 rows for %2 ports"},
    {Kind::NoRecord, "this is no record"},
    {Kind::NoNumber, "'%1' is no number"},
    {Kind::NoText, "'%1' is no text"},
    {Kind::NoObject, "'%1' is no object"},
    {Kind::NoTruthValue, "'%1' is neither true nor false"},
    {Kind::FieldMissing, "'%1' is missing"},
    {Kind::FieldDiffers, "'%1' is not %2"},
    {Kind::NoProject, "the file holds no project"},
    {Kind::IsSettings, "the file holds settings, no project"},
    {Kind::UnknownStatement, "unknown statement type \"%1\""},
    {Kind::UnknownField, "'%1' is not known here"},
    {Kind::LeastAboveMost, "'min' of '%1' is greater than 'max'"},
    {Kind::OtherFault, "%1"},
    {Kind::NoPortInUse, "no port is in use"},
    {Kind::MoreRecords, "faults in %1 more records"},
};
static_assert(FileProblem::isComplete(words));

}  // namespace

QString FileProblem::Reason::text() const {
    const char* const row = words[static_cast<int>(kind)].text;
    return filled(QLatin1String(isSyntax(kind) ? "no JSON: " : "") + QLatin1String(row));
}

QString FileProblem::Reason::filled(const QString& text) const {
    switch (arguments.size()) {
        case 0:
            return text;
        case 1:
            return text.arg(arguments[0]);
        default:
            return text.arg(arguments[0], arguments[1]);
    }
}

bool FileProblem::Reason::operator==(const Reason& other) const {
    return kind == other.kind && arguments == other.arguments;
}

QString FileProblem::text() const {
    QStringList texts;
    for (const Reason& reason : reasons) {
        texts.append(reason.text());
    }
    return texts.join(QLatin1String("; ")).simplified();
}

bool FileProblem::operator==(const FileProblem& other) const {
    return file == other.file && place.line == other.place.line && place.column == other.place.column &&
           reasons == other.reasons;
}

bool isSyntax(Kind kind) {
    return kind >= Kind::NoValue && kind <= Kind::BadUtf8;
}

FileProblem::Reason systemReason(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
            return {Kind::NoPermission};
        case ENOENT:
        case ENOTDIR:
            return {Kind::NoSuchFolder};
        case EISDIR:
            return {Kind::IsFolder};
        case ENOSPC:
            return {Kind::DiskFull};
        case EDQUOT:
            return {Kind::QuotaUsed};
        case EROFS:
            return {Kind::DiskReadOnly};
        case EIO:
            return {Kind::DiskFailed};
        case EFBIG:
            return {Kind::FileTooLarge};
        default:
            return {Kind::OtherError, {QString::fromLocal8Bit(std::strerror(error))}};
    }
}

}  // namespace mendo
