#include "app/desktop/RecentDocuments.h"

#include <QFileInfo>
#include <QSettings>
#include <algorithm>

namespace {

constexpr QLatin1String settingName("recentDocuments");

/// Read anew each time: another process may have added a file.
class Settings : public QSettings {
public:
    Settings()
        : QSettings(IniFormat, UserScope, QStringLiteral("tabulet"), QStringLiteral("tabulet")) {}

    QStringList paths() const { return value(settingName).toStringList(); }
    void setPaths(const QStringList& paths) { setValue(settingName, paths); }
};

}  // namespace

QStringList RecentDocuments::existingPaths() {
    QStringList paths = Settings().paths();
    paths.removeIf([](const QString& path) { return !QFileInfo::exists(path); });
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
    return paths.isEmpty() ? QString() : QFileInfo(paths.first()).absolutePath();
}
