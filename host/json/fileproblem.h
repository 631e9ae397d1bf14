#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

namespace mendo {

/// A place in a text: line and column from 1, or zeros for none. Columns count characters (Unicode code
/// points), as editors do: not bytes, and not UTF-16 units, of which an emoji has two. A byte-order mark is
/// no character.
struct TextPlace {
    int line = 0;
    int column = 0;
};

/// What is wrong with a file, and where. A panel words it in the operator's language, by kind and arguments;
/// `text()` is for logs and command lines.
struct FileProblem {
    enum class Kind {
        // The file system.
        NoSuchFile,
        NoSuchFolder,
        IsFolder,
        NoPlainFile,
        NoPermission,
        DiskFull,
        QuotaUsed,
        DiskReadOnly,
        DiskFailed,
        FileTooLarge,
        OtherError,  ///< %1: the system's words
        FolderNotSynced,
        CannotKeep,  ///< the file in the place of a new one
        // The text is no JSON; see isSyntax().
        NoValue,
        NoDigit,
        NoKey,
        NoColon,
        NoCommaOrBrace,
        NoCommaOrBracket,
        NoEndOfString,
        NoEndOfFile,
        TooDeep,
        BadValue,
        BadNumber,
        BadEscape,
        BadUtf8,
        // The content is not what is expected.
        NoContainer,
        NoArray,
        NoRecordList,
        WrongRowCount,  ///< %1: rows in the file; %2: ports
        NoRecord,
        NoNumber,      ///< %1: field
        NoText,        ///< %1: field
        NoObject,      ///< %1: field
        NoTruthValue,  ///< %1: field
        FieldMissing,  ///< %1: field
        FieldDiffers,  ///< %1: field; %2: its expected value
        NoProject,
        IsSettings,
        UnknownStatement,  ///< %1: type
        UnknownField,      ///< %1: field
        LeastAboveMost,    ///< "min" is greater than "max"; %1: the field that holds them
        OtherFault,        ///< %1: words of the program that found it
        // What follows from the reason before it.
        NoPortInUse,
        MoreRecords,  ///< %1: number of further records with a fault
    };

    /// A row of a table that words all kinds, in their order.
    struct Wording {
        Kind kind;
        const char* text;
    };
    template <int size>
    static constexpr bool isComplete(const Wording (&rows)[size]) {
        for (int i = 0; i < size; ++i) {
            if (static_cast<int>(rows[i].kind) != i) {
                return false;
            }
        }
        return size == static_cast<int>(Kind::MoreRecords) + 1;
    }

    struct Reason {
        Kind kind;
        QStringList arguments = {};

        /// In plain English, without a full stop: "no JSON: expected a colon".
        QString text() const;
        /// A text with the arguments in the places of its %1 and %2.
        QString filled(const QString& text) const;
        bool operator==(const Reason& other) const;
    };

    QString file;             ///< as the caller named it
    TextPlace place;          ///< none where the file as a whole is concerned
    QVector<Reason> reasons;  ///< never empty in a report; those behind the first follow from it

    /// The reasons in plain English, on one line.
    QString text() const;
    bool operator==(const FileProblem& other) const;
};

/// Whether the kind says where a text stops being JSON.
[[nodiscard]] bool isSyntax(FileProblem::Kind kind);

/// The reason for an error number of the system, of a file that is there or is to be written: ENOENT means
/// its folder.
[[nodiscard]] FileProblem::Reason systemReason(int error);

}  // namespace mendo

Q_DECLARE_METATYPE(mendo::FileProblem)
