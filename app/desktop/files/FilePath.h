#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <optional>

class QUrl;

/// File paths as strings that lose nothing.
///
/// To the system a path is bytes, any but NUL. In the strings here each byte that is not part of
/// well-formed UTF-8 is a lone surrogate, U+DC80 for 0x80 to U+DCFF for 0xFF, which no decoded
/// UTF-8 contains; so the bytes come back exactly. The scheme is that of PEP 383
/// ("surrogateescape", Python Enhancement Proposals, 2009). Whoever calls the system uses
/// `encoded`, and whoever shows a path to people uses `shown` or `shownName`.
namespace FilePath {

QString decoded(const QByteArray& bytes);

/// The exact reverse of `decoded`.
QByteArray encoded(const QString& path);

/// The path for people: what is not UTF-8 is a replacement character.
QString shown(const QString& path);

/// The last component, for people.
QString shownName(const QString& path);

/// What is before the last component of an absolute path; "/" for what is in the root.
QString folder(const QString& path);

/// The path from the root, without empty components, "." and "..". Those ".." that stand after a
/// link stay: they lead elsewhere than the path suggests.
QString absolute(const QString& path);

/// Whether something is there, links followed.
bool exists(const QString& path);

/// Whether two paths lead to one file, be it by links of either kind. Paths at which nothing is
/// lead to the same file when they are the same.
bool isSameFile(const QString& one, const QString& other);

/// A path as the system has it, and where the link at its end leads, and the link at the end of
/// that, and so on, as far as the system itself follows them. The last need not exist.
QByteArrayList followed(const QByteArray& path);

/// The URI of an absolute path, in ASCII.
QByteArray toUri(const QString& path);

/// The path that the URI of a file on this machine names; nothing for other URIs.
std::optional<QString> fromUri(const QUrl& uri);

/// The path that somebody has typed, as a path or as the URI of a file; nothing for other URIs. A
/// file whose name looks like a URI is found by its name.
std::optional<QString> fromInput(const QString& input);

}  // namespace FilePath
