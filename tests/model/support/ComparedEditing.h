#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "tests/model/support/ComparedActions.h"
#include "tests/model/support/ModelComparison.h"
#include "tests/model/support/RandomOperations.h"
#include "tests/model/support/ReferenceDocument.h"
#include "tests/model/support/ReferenceOutline.h"

/// One document with its outline and its history, and beside it the plain model. Does the same to
/// both and compares all that can be seen of them.
class ComparedEditing {
public:
    /// How it runs; chosen by its seed.
    struct Setup {
        PlistValue content;
        bool hasHistory = true;
        bool makesAllNodes = true;  ///< else only those that the model makes by itself
    };

    static Setup setup(unsigned seed);

    explicit ComparedEditing(const Setup& setup);
    ~ComparedEditing();

    /// Does one operation. The first difference after it, or nothing.
    std::optional<QString> perform(const RandomOperation& operation);

    /// What the last operation was, in words.
    const QString& description() const noexcept { return description_; }

    /// How many times the tree has changed.
    int changeCount() const noexcept { return reference_.treeChanges(); }

private:
    using Name = ReferenceItem::Name;

    using Known = ModelComparison::Known;

    void run(const RandomOperation& operation);
    void edit(const RandomOperation& operation);
    void editTree(const RandomOperation& operation);
    void changeHistory(const RandomOperation& operation);
    void changeOutline(const RandomOperation& operation);
    void addItems(const RandomOperation& operation);
    void replaceContent(const RandomOperation& operation);
    void expandOrCollapse(const RandomOperation& operation);
    void setFilter(const RandomOperation& operation);
    void beginGroup();
    void endGroup();

    const Known& chosen(std::uint32_t choice) const {
        return comparison_.known()[choice % comparison_.known().size()];
    }
    Known chosenContainer(std::uint32_t choice) const;
    std::vector<Known> someChosen(const RandomOperation& operation, std::uint32_t most) const;
    static std::vector<Name> namesOf(const std::vector<Known>& items);
    static std::vector<PlistNodePtr> nodesOf(const std::vector<Known>& items);
    void describe(const QString& what) { description_ = what; }
    static QString textOf(const Known& item);
    static QString textOf(const std::vector<Known>& items);

    void compare();
    void require(bool holds, const char* what) { comparison_.require(holds, what); }

    ModelComparison comparison_;
    PlistDocument document_;
    std::unique_ptr<UndoManager> undo_;
    PlistEditor editor_;
    OutlineState outline_;
    int treeChanges_ = 0;
    UndoManager::State takenState_ = 0;

    ReferenceDocument reference_;
    std::unique_ptr<ReferenceOutline> referenceOutline_;
    std::unique_ptr<ComparedActions> actions_;
    int takenReferenceState_ = 0;

    bool isGroupOpen_ = false;
    QString description_;
};
