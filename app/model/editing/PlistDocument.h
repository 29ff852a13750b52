#pragma once

#include <QObject>
#include <QStringList>
#include <optional>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNodeObserver.h"
#include "app/model/tree/PlistNodePtr.h"

/// One open file: the editable tree, the format it will be saved in, and a count of revisions by
/// which dependent state knows when to start over. Belongs to the main thread.
///
/// Each signal fires only when its property is set to a different value.
class PlistDocument : public QObject, private PlistNodeObserver {
    Q_OBJECT

public:
    /// A new document: an empty dictionary, to be saved as XML.
    explicit PlistDocument(QObject* parent = nullptr);
    ~PlistDocument() override;

    /// The types of files that can be opened, in the order in which they are offered: the general
    /// one, its XML and its binary form, and three named for what they are used for.
    static QStringList readableContentTypes();

    /// The types that can be saved as. The format written does not depend on the type.
    static QStringList writableContentTypes();

    /// The root of the tree; never null. Lives at least until the next change of the root.
    PlistNode& root() const noexcept { return *root_; }

    /// Puts another tree in place. The node must have no parent and belong to no other document.
    void setRoot(PlistNodePtr root);

    /// The format that the document will be saved in: never `openStep`, which can only be read.
    PlistFormat format() const noexcept { return format_; }
    void setFormat(PlistFormat format);

    /// 0 for a new document; counts the contents read and the edits of values or of the shape of
    /// the tree.
    qint64 revision() const noexcept { return revision_; }

    /// Adds one. Running past the largest 64-bit number stops the process.
    void increaseRevision();

    /// Counts every change of the tree whatsoever, renames and new roots included: two equal
    /// numbers mean that index paths still name the same nodes.
    quint64 treeVersion() const noexcept { return treeVersion_; }

    /// Brackets changes of the tree that belong together: `treeChanged` comes once, when the
    /// outermost bracket closes, if anything has changed. For `PlistEditor` and `UndoManager`.
    void beginEditing();
    void endEditing();

    /// Whether the file was in the OpenStep form and will be saved in another one.
    bool wasReadOnlyFormat() const noexcept { return wasReadOnlyFormat_; }
    void setWasReadOnlyFormat(bool wasReadOnlyFormat);

    /// All that reading a file sets.
    struct Content {
        PlistNodePtr root;
        PlistFormat format;
        bool wasReadOnlyFormat;

        /// That of a file in the format `format` from which `root` has been made: the OpenStep form
        /// will be saved as XML.
        static Content ofFile(PlistNodePtr root, PlistFormat format);
    };
    Content content() const { return {root_, format_, wasReadOnlyFormat_}; }
    void setContent(const Content& content);

    /// Makes a snapshot that was read the content of this document, and counts one more revision.
    void apply(const PlistFile& snapshot);

    /// The same with a root that has been made from the snapshot, which was in the format `format`.
    void apply(PlistNodePtr root, PlistFormat format);

    /// The content as it is now, for a writer in another thread. Costs in proportion to what
    /// changed since the last one.
    PlistFile snapshot() const;

Q_SIGNALS:
    void rootChanged();
    void formatChanged();
    void revisionChanged();
    void wasReadOnlyFormatChanged();

    /// The tree has changed since the outermost editing bracket opened: time to rebuild the rows.
    void treeChanged();

    /// A node of the tree has changed; see `PlistNodeObserver`. `node` lives at least as long as
    /// the call.
    void nodeChanged(PlistNode* node, PlistNodeChanges changes, std::optional<PlistNodeRun> run);

private:
    void handleNodeChange(PlistNode& node, PlistNodeChanges changes,
                          std::optional<PlistNodeRun> run) override;

    PlistNodePtr root_;
    qint64 revision_ = 0;
    quint64 treeVersion_ = 0;
    quint64 versionBeforeEditing_ = 0;
    int editingDepth_ = 0;
    PlistFormat format_ = PlistFormat::xml;
    bool wasReadOnlyFormat_ = false;
};
