#pragma once

#include <QObject>

class DocumentController;
class DocumentView;
class QWidget;

/// What happens between the wish to close a document's window and its end: what is being typed is
/// applied, a save that is under way is waited for, and the user is asked about unsaved changes.
class CloseProtocol : public QObject {
    Q_OBJECT

public:
    /// All of them outlive this. `window` is closed again when nothing is in the way any more.
    CloseProtocol(DocumentController& controller, DocumentView& view, QWidget& window);

    /// The window wants to close: true if it may. Else the signals below tell what comes next.
    bool mayClose();

    /// The user keeps the window after all, or a save failed that it was to be closed after.
    void refuse();

Q_SIGNALS:
    /// The window closes when the save that is under way is done.
    void waitsForSave();

    /// The user wants to save the document before the window closes.
    void saveChosen();

    /// The user discards the changes; the window closes next.
    void discardChosen();

    void refused();

private:
    void askToSave();
    void handleAnswer(int answer);
    void handleSaved();

    DocumentController& controller_;
    DocumentView& view_;
    QWidget& window_;
    bool closesWhenSaved_ = false;
    bool isDiscarded_ = false;
    bool isAsking_ = false;
};
