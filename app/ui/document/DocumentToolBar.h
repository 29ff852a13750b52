#pragma once

#include <QToolBar>

class FormatPicker;
class SearchField;

/// The toolbar of a document window: buttons to add and delete items, the format for saving, and
/// the search field.
class DocumentToolBar : public QToolBar {
    Q_OBJECT

public:
    explicit DocumentToolBar(QWidget* parent = nullptr);

    FormatPicker& formatPicker() const noexcept { return *formatPicker_; }
    SearchField& searchField() const noexcept { return *searchField_; }

    void setAddEnabled(bool isEnabled);
    void setDeleteEnabled(bool isEnabled);

Q_SIGNALS:
    void addChosen();
    void deleteChosen();

private:
    QAction* addButton(const QIcon& icon, const QString& title, const QString& tooltip);

    QAction* add_;
    QAction* delete_;
    FormatPicker* formatPicker_;
    SearchField* searchField_;
};
