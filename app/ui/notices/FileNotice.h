#pragma once

#include "app/desktop/document/ExternalChanges.h"
#include "app/ui/notices/NoticeStrip.h"

/// The notice about what other programs have done to the file of a document, with buttons for what
/// to do about it. It is visible only when there is something to say.
class FileNotice : public NoticeStrip {
    Q_OBJECT

public:
    /// `changes` outlives the strip.
    explicit FileNotice(const ExternalChanges& changes, QWidget* parent = nullptr);

    /// Shows the trouble with the file, which is called `name`; hides where there is none.
    void showTrouble(const QString& name);

Q_SIGNALS:
    void reloadChosen();
    void keepChosen();
    void saveChosen();

private:
    QString textFor(const QString& name) const;

    const ExternalChanges& changes_;
    QPushButton* reload_;
    QPushButton* keep_;
    QPushButton* save_;
};
