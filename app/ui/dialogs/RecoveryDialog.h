#pragma once

#include <QDialog>
#include <vector>

#include "app/desktop/recovery/RecoverableDocument.h"

class QListWidget;
class QPushButton;

/// Lists the documents that a crash left unsaved, all of them selected, and asks what to do with
/// them. Whatever is not recovered or discarded is offered again at the next start. Closes when
/// nothing is left in it, and deletes itself when it is closed.
class RecoveryDialog : public QDialog {
    Q_OBJECT

public:
    explicit RecoveryDialog(std::vector<RecoverableDocument> documents, QWidget* parent = nullptr);

Q_SIGNALS:
    void recoverChosen(const RecoverableDocument& document);

    /// The user wants to see this file in a file manager.
    void showFolderChosen(const QString& path);

private:
    void addRow(int number);
    QWidget* createButtons();
    void updateButtons();
    QList<int> selectedNumbers() const;
    void recover();
    void askToDiscard();
    void discard();
    void removeRows(const QList<int>& numbers);

    std::vector<RecoverableDocument> documents_;
    QListWidget* list_;
    QPushButton* recover_ = nullptr;
    QPushButton* discard_ = nullptr;
    QPushButton* showFolder_ = nullptr;
};
