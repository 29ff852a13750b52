#pragma once

#include <QString>
#include <exception>
#include <string>

/// Dragged or pasted items of the application's own type that cannot be understood.
class TransferError : public std::exception {
public:
    TransferError();

    /// One sentence for people: "Invalid dragged items."
    const QString& message() const noexcept { return message_; }

    /// The message in UTF-8; valid while this error lives.
    const char* what() const noexcept override { return what_.c_str(); }

private:
    QString message_;
    std::string what_;
};
