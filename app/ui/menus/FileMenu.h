#pragma once

#include <QMenu>

class QAction;

/// The File menu of a window, with the recent files in a submenu. It only tells what was chosen.
class FileMenu : public QMenu {
    Q_OBJECT

public:
    explicit FileMenu(QWidget* parent);

    /// Whether Save and Save As can be chosen.
    void setSavingEnabled(bool isEnabled);

    /// Whether Revert to Saved can be chosen.
    void setRevertEnabled(bool isEnabled);

Q_SIGNALS:
    void newChosen();
    void openChosen();
    void recentChosen(const QString& path);
    void closeChosen();
    void saveChosen();
    void saveAsChosen();
    void revertChosen();
    void quitChosen();

private:
    QAction* add(const QString& title, const QKeySequence& key, const char* icon,
                 void (FileMenu::*chosen)());
    void fillRecent();

    QMenu* recent_;
    QAction* save_;
    QAction* saveAs_;
    QAction* revert_;
};
