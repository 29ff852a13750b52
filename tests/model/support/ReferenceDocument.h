#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "tests/model/support/ReferenceItem.h"

/// A document and its undo history by the plain rules, slowly: an edit changes a tree of records,
/// and the history is a list of copies of the whole document before and after each entry.
class ReferenceDocument {
public:
    using Name = ReferenceItem::Name;
    enum class History { kept, none };

    ReferenceDocument(const PlistFile& file, History history);

    /// What undo brings back.
    struct Content {
        ReferenceItem root;
        PlistFormat format = PlistFormat::xml;
        bool wasReadOnlyFormat = false;
    };

    const Content& content() const { return content_; }
    const ReferenceItem& root() const { return content_.root; }
    qint64 revision() const { return revision_; }

    /// How often it was said that the tree has changed.
    int treeChanges() const { return treeChanges_; }

    /// A new item that is not in the document yet.
    ReferenceItem newItem(const std::string& key, const PlistValue& value);

    // The operations of `PlistEditor`, with names for nodes. Those that may be refused tell why.
    std::optional<QString> rename(Name item, const std::string& key);
    void changeValue(Name item, const PlistValue& value);
    void changeType(Name item, PlistType type);
    void changeFormat(PlistFormat format);
    void add(const std::vector<ReferenceItem>& items, Name parent, qint64 index);
    void remove(const std::vector<Name>& items);
    void move(const std::vector<Name>& items, Name parent, qint64 index);
    void sortKeys(Name item);
    void replaceContent(const PlistFile& file, const QString& actionName);

    // The history.
    void beginGroup();
    void endGroup();

    /// For the open group: what undoing or redoing it adds to the revision, whatever is in it.
    void setRevisionStepBack(int step) { open_.revisionStep = step; }

    void undo();
    void redo();
    void clearHistory();
    std::size_t undoCount() const { return undoable_.size(); }
    std::size_t redoCount() const { return redoable_.size(); }
    QString undoName() const { return undoable_.empty() ? QString() : undoable_.back().name; }
    QString redoName() const { return redoable_.empty() ? QString() : redoable_.back().name; }

    /// Which of all states there ever were this is.
    int state() const { return state_; }
    void setSavedState(int state) { savedState_ = state; }
    bool isModified() const { return state_ != savedState_; }

private:
    struct Entry {
        QString name;
        Content before;
        Content after;
        int stateBefore = 0;
        int stateAfter = 0;
        int revisionStep = 0;  ///< what undoing or redoing it adds to the revision
        bool changesTree = false;
        bool isEmpty = true;
    };

    /// What a change of each kind adds to the revision.
    struct Steps {
        int now = 0;
        int back = 0;  ///< when it is undone or redone
    };

    void note(const QString& name, Steps steps, bool changesTree);
    void goBack(std::vector<Entry>& from, std::vector<Entry>& to, bool isUndo);

    Name lastName_ = 0;  ///< before the content, which takes names from it
    Content content_;
    History history_;
    qint64 revision_ = 1;  ///< the file that was read
    int treeChanges_ = 0;
    std::vector<Entry> undoable_;
    std::vector<Entry> redoable_;
    Entry open_;
    int depth_ = 0;
    int state_ = 0;
    int lastState_ = 0;
    int savedState_ = 0;
};
