#include "app/desktop/session/RecentDocuments.h"

#include <QSettings>
#include <QUrl>
#include <algorithm>
#include <optional>

#include "app/desktop/files/FilePath.h"

namespace {

constexpr QLatin1String settingName("recentDocuments");

/// Read again each time: another process may have added a file.
class Settings : public QSettings {
public:
    Settings()
        : QSettings(IniFormat, UserScope, QStringLiteral("tabulet"), QStringLiteral("tabulet")) {}

    QStringList paths() const {
        QStringList paths;
        for (const QString& uri : value(settingName).toStringList()) {
            if (const std::optional<QString> path =
                    FilePath::fromUri(QUrl::fromEncoded(uri.toLatin1()))) {
                paths += *path;
            }
        }
        return paths;
    }

    /// As URIs: a path need not be UTF-8, and settings are.
    void setPaths(const QStringList& paths) {
        QStringList uris;
        for (const QString& path : paths) {
            uris += QString::fromLatin1(FilePath::toUri(path));
        }
        setValue(settingName, uris);
    }
};

}  // namespace

QStringList RecentDocuments::existingPaths() {
    QStringList paths = Settings().paths();
    paths.removeIf([](const QString& path) { return !FilePath::exists(path); });
    return paths;
}

void RecentDocuments::add(const QString& path) {
    Settings settings;
    QStringList paths = settings.paths();
    paths.removeAll(path);
    paths.prepend(path);
    settings.setPaths(paths.first(std::min(paths.size(), capacity)));
}

void RecentDocuments::clear() {
    Settings().setPaths({});
}

QString RecentDocuments::lastFolder() {
    const QStringList paths = Settings().paths();
    const auto found = std::ranges::find_if(
        paths, [](const QString& path) { return FilePath::exists(FilePath::folder(path)); });
    return found == paths.end() ? QString() : FilePath::folder(*found);
}
