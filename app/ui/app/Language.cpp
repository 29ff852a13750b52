#include "app/ui/app/Language.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

/// Those of the program. English needs a catalogue too, which tells singular from plural.
QString loadTexts(const QLocale& user) {
    auto* texts = new QTranslator(qApp);
    const QString folder = QStringLiteral(":/i18n");
    if (texts->load(user, QStringLiteral("tabulet"), QStringLiteral("_"), folder) ||
        texts->load(QStringLiteral("tabulet_en"), folder)) {
        QCoreApplication::installTranslator(texts);
    }
    return texts->language();
}

/// Those of Qt in the same language: a dialog in two is worse than one in a foreign language.
void loadQtTexts(const QString& language) {
    auto* texts = new QTranslator(qApp);
    if (texts->load(QStringLiteral("qtbase_") + language,
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(texts);
    }
}

}  // namespace

void Language::load() {
    const QLocale user = QLocale::system();
    loadQtTexts(loadTexts(user));
    if (user.textDirection() == Qt::RightToLeft) {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    }
}
