#include "app/model/editing/PlistDocument.h"

#include <limits>
#include <utility>

#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"

PlistDocument::PlistDocument(QObject* parent)
    : QObject(parent), root_(PlistNode::create({}, PlistValue())) {
    root_->setObserver(this);
}

PlistDocument::~PlistDocument() {
    root_->setObserver(nullptr);
}

QStringList PlistDocument::readableContentTypes() {
    return {QStringLiteral("application/x-plist"),
            QStringLiteral("application/x-plist+xml"),
            QStringLiteral("application/x-bplist"),
            QStringLiteral("com.apple.xcode.entitlements-property-list"),
            QStringLiteral("com.apple.xcode.app-privacy-property-list"),
            QStringLiteral("com.apple.xcode.strings-dictionary")};
}

QStringList PlistDocument::writableContentTypes() {
    QStringList types = readableContentTypes();
    types.remove(1, 2);
    return types;
}

void PlistDocument::setRoot(PlistNodePtr root) {
    MainThread::check();
    plistCheck(root && root->parent() == nullptr, "a root has no parent");
    if (root == root_) {
        return;
    }
    root_->setObserver(nullptr);
    root->setObserver(this);
    // The old tree lives until everybody has heard of the new one.
    const PlistNodePtr old = std::exchange(root_, std::move(root));
    ++treeVersion_;
    Q_EMIT rootChanged();
}

void PlistDocument::setFormat(PlistFormat format) {
    MainThread::check();
    plistCheck(isWritable(format), "a document is saved in a format that can be written");
    if (format_ != format) {
        format_ = format;
        Q_EMIT formatChanged();
    }
}

void PlistDocument::increaseRevision() {
    MainThread::check();
    plistCheck(revision_ < std::numeric_limits<qint64>::max(),
               "the revisions of a document are used up");
    ++revision_;
    Q_EMIT revisionChanged();
}

void PlistDocument::beginEditing() {
    MainThread::check();
    if (editingDepth_++ == 0) {
        versionBeforeEditing_ = treeVersion_;
    }
}

void PlistDocument::endEditing() {
    MainThread::check();
    plistCheck(editingDepth_ > 0, "only editing that has begun can end");
    if (--editingDepth_ == 0 && treeVersion_ != versionBeforeEditing_) {
        Q_EMIT treeChanged();
    }
}

void PlistDocument::setWasReadOnlyFormat(bool wasReadOnlyFormat) {
    MainThread::check();
    if (wasReadOnlyFormat_ != wasReadOnlyFormat) {
        wasReadOnlyFormat_ = wasReadOnlyFormat;
        Q_EMIT wasReadOnlyFormatChanged();
    }
}

PlistDocument::Content PlistDocument::Content::ofFile(PlistNodePtr root, PlistFormat format) {
    return {std::move(root), isWritable(format) ? format : PlistFormat::xml,
            format == PlistFormat::openStep};
}

void PlistDocument::setContent(const Content& content) {
    MainThread::check();
    setWasReadOnlyFormat(content.wasReadOnlyFormat);
    setFormat(content.format);
    setRoot(content.root);
}

void PlistDocument::apply(const PlistFile& snapshot) {
    apply(PlistNode::create({}, snapshot.root), snapshot.format);
}

void PlistDocument::apply(PlistNodePtr root, PlistFormat format) {
    setContent(Content::ofFile(std::move(root), format));
    increaseRevision();
}

PlistFile PlistDocument::snapshot() const {
    MainThread::check();
    return {root_->value(), format_};
}

void PlistDocument::handleNodeChange(PlistNode& node, PlistNodeChanges changes,
                                     std::optional<PlistNodeRun> run) {
    ++treeVersion_;
    Q_EMIT nodeChanged(&node, changes, run);
}
