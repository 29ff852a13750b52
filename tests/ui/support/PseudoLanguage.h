#pragma once

#include <QStringList>
#include <QTranslator>

class QWidget;

/// A language in which every text stands between marks and is half as long again, so that a text
/// which never met a translator stands out.
class PseudoLanguage : public QTranslator {
public:
    /// Speaks it until this is destroyed.
    PseudoLanguage();
    ~PseudoLanguage() override;

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int number) const override;

    /// What is left of a text without all that is marked; nothing if no letter is left.
    static QString unmarkedIn(QString text);

    /// All texts that a window and what is visible in it show or have screen readers say, with its
    /// menus and tool tips; without those of editors and lists, which hold values.
    static QStringList textsOf(QWidget& window);
};
