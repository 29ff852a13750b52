#pragma once

#include <QString>
#include <exception>
#include <string>

/// Why a file could not be read or written, for people.
class FileError : public std::exception {
public:
    enum class Code {
        readFailed,     ///< the system would not let us read it
        corruptFile,    ///< it was read and is not a property list
        writeFailed,    ///< the system would not let us write it
        changedOnDisk,  ///< another program has changed it, and it was left untouched
        notEncoded,     ///< the document could not be encoded in the format asked for
    };

    FileError(Code code, QString path, QString failureReason);

    /// An error of a system call, with the system's own reason for `errorNumber`.
    static FileError fromSystem(Code code, const QString& path, int errorNumber);

    Code code() const noexcept { return code_; }

    /// The file, as it was named by the caller.
    const QString& path() const noexcept { return path_; }

    /// One sentence that names the file by its last component: "The file “a.plist” is not a
    /// readable property list."
    const QString& message() const noexcept { return message_; }

    /// Why: the text of the `PlistError`, or the system's reason.
    const QString& failureReason() const noexcept { return failureReason_; }

    /// Message and reason in UTF-8; valid while this error lives.
    const char* what() const noexcept override { return what_.c_str(); }

private:
    Code code_;
    QString path_;
    QString failureReason_;
    QString message_;
    std::string what_;
};
