#include "app/desktop/files/FilePath.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QList>
#include <QUrl>
#include <algorithm>
#include <climits>
#include <cstdint>

#include "app/desktop/files/FileFolder.h"

namespace {

constexpr char16_t firstEscape = 0xDC80;
constexpr char16_t lastEscape = 0xDCFF;
constexpr char16_t escapeOffset = 0xDC00;

bool isEscape(QChar character) {
    return character.unicode() >= firstEscape && character.unicode() <= lastEscape;
}

bool isContinuation(QByteArrayView bytes, qsizetype position) {
    return position < bytes.size() && (static_cast<std::uint8_t>(bytes[position]) & 0xC0U) == 0x80;
}

/// How many bytes the character has that begins at `start`, if it is well-formed; otherwise 1.
qsizetype characterSize(QByteArrayView bytes, qsizetype start) {
    qsizetype size = 1;
    while (size < 4 && isContinuation(bytes, start + size)) {
        ++size;
    }
    // After a whole character there may be continuations of nothing.
    while (size > 1 && !bytes.sliced(start, size).isValidUtf8()) {
        --size;
    }
    return size;
}

/// Whether a low surrogate has its other half in front of it.
bool isPaired(const QString& text, qsizetype position) {
    return position > 0 && text[position - 1].isHighSurrogate();
}

/// Whether a text begins as the address of a file does, or with the name of a protocol and "://".
bool isAddress(const QString& text) {
    const auto isOfProtocol = [](QChar character) {
        return character.unicode() < 0x80 &&
               (character.isLetterOrNumber() || QStringView(u"+-.").contains(character));
    };
    const qsizetype end = text.indexOf(QLatin1String("://"));
    return text.startsWith(QLatin1String("file:"), Qt::CaseInsensitive) ||
           (end > 0 && std::all_of(text.begin(), text.begin() + end, isOfProtocol));
}

bool isLink(const QByteArray& path) {
    struct stat status {};
    return ::lstat(path.constData(), &status) == 0 && S_ISLNK(status.st_mode);
}

/// Where the link at `path` leads; empty if there is no link.
QByteArray linkTarget(const QByteArray& path) {
    QByteArray link(PATH_MAX, '\0');
    const ssize_t size =
        ::readlink(path.constData(), link.data(), static_cast<std::size_t>(link.size()));
    if (size <= 0) {
        return {};
    }
    link.truncate(size);
    return link.startsWith('/') ? link : FileFolder::of(path) + '/' + link;
}

bool find(const QString& path, struct stat& status) {
    return ::stat(FilePath::encoded(path).constData(), &status) == 0;
}

void append(QByteArray& path, const QByteArray& component) {
    if (component.isEmpty() || component == ".") {
        return;
    }
    if (component == ".." && !path.endsWith("/..") && !isLink(path)) {
        path.truncate(qMax(path.lastIndexOf('/'), qsizetype{0}));
    } else {
        path += '/' + component;
    }
}

QByteArray currentFolder() {
    QByteArray folder(PATH_MAX, '\0');
    if (::getcwd(folder.data(), static_cast<std::size_t>(folder.size())) == nullptr) {
        return "/";  // it has been deleted
    }
    folder.truncate(static_cast<qsizetype>(qstrlen(folder.constData())));
    return folder;
}

}  // namespace

QString FilePath::decoded(const QByteArray& bytes) {
    if (bytes.isValidUtf8()) {
        return QString::fromUtf8(bytes);
    }
    QString text;
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype size = characterSize(bytes, start);
        const QByteArrayView character = QByteArrayView(bytes).sliced(start, size);
        if (character.isValidUtf8()) {
            text += QString::fromUtf8(character);
        } else {
            const auto byte = static_cast<std::uint8_t>(character.front());
            text += QChar(static_cast<char16_t>(escapeOffset + byte));
        }
        start += size;
    }
    return text;
}

QByteArray FilePath::encoded(const QString& path) {
    QByteArray bytes;
    qsizetype textStart = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        if (isEscape(path[i]) && !isPaired(path, i)) {
            bytes += QStringView(path).sliced(textStart, i - textStart).toUtf8();
            bytes += static_cast<char>(path[i].unicode() - escapeOffset);
            textStart = i + 1;
        }
    }
    return bytes + QStringView(path).sliced(textStart).toUtf8();
}

QString FilePath::shown(const QString& path) {
    QString text = path;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isEscape(text[i]) && !isPaired(path, i)) {
            text[i] = QChar(QChar::ReplacementCharacter);
        }
    }
    return text;
}

QString FilePath::shownName(const QString& path) {
    return shown(path.mid(path.lastIndexOf(u'/') + 1));
}

QString FilePath::folder(const QString& path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

QString FilePath::absolute(const QString& path) {
    const QByteArray bytes = encoded(path);
    const QByteArray whole = bytes.startsWith('/') ? bytes : currentFolder() + '/' + bytes;
    QByteArray result;
    const QList<QByteArray> components = whole.split('/');
    for (const QByteArray& component : components) {
        append(result, component);
    }
    return result.isEmpty() ? QStringLiteral("/") : decoded(result);
}

bool FilePath::exists(const QString& path) {
    struct stat status {};
    return ::stat(encoded(path).constData(), &status) == 0;
}

bool FilePath::isSameFile(const QString& one, const QString& other) {
    struct stat first {};
    struct stat second {};
    const bool isThere = find(one, first);
    if (isThere != find(other, second)) {
        return false;
    }
    return isThere ? first.st_dev == second.st_dev && first.st_ino == second.st_ino
                   : absolute(one) == absolute(other);
}

QByteArrayList FilePath::followed(const QByteArray& path) {
    constexpr qsizetype linkLimit = 40;  // as many as the system follows
    QByteArrayList paths{path};
    while (paths.size() <= linkLimit) {
        const QByteArray next = linkTarget(paths.last());
        if (next.isEmpty()) {
            break;
        }
        paths += next;
    }
    return paths;
}

QByteArray FilePath::toUri(const QString& path) {
    return "file://" + encoded(path).toPercentEncoding("/");
}

std::optional<QString> FilePath::fromUri(const QUrl& uri) {
    const QString host = uri.host();
    if (!uri.isLocalFile() || !(host.isEmpty() || host == QLatin1String("localhost"))) {
        return std::nullopt;
    }
    // `toLocalFile` would leave the percent signs of what is no UTF-8.
    const QByteArray bytes =
        QByteArray::fromPercentEncoding(uri.path(QUrl::FullyEncoded).toLatin1());
    if (!bytes.startsWith('/') || bytes.contains('\0')) {
        return std::nullopt;
    }
    return decoded(bytes);
}

std::optional<QString> FilePath::fromInput(const QString& input) {
    if (!isAddress(input) || exists(input)) {
        return input;
    }
    QByteArray uri;
    for (const char byte : encoded(input)) {
        // What an address must not contain stands for itself.
        uri += byte > ' ' && byte < '\x7F' ? QByteArray(1, byte)
                                           : QByteArray(1, byte).toPercentEncoding();
    }
    return fromUri(QUrl::fromEncoded(uri));
}
