#include "tests/model/support/ComparedEditing.h"

#include <algorithm>
#include <set>
#include <utility>

#include "app/model/tree/PlistNode.h"
#include "tests/model/support/RandomValues.h"
#include "tests/model/support/TreeText.h"

namespace {

using Kind = RandomOperation::Kind;

/// A document that grew beyond this gets no more items, so that comparing stays fast.
constexpr std::size_t manyItems = 100;

QString quoted(const std::string& text) {
    return QLatin1Char('"') + QString::fromStdString(text) + QLatin1Char('"');
}

PlistFormat anyFormat(std::uint32_t choice) {
    constexpr PlistFormat formats[] = {PlistFormat::xml, PlistFormat::binary,
                                       PlistFormat::openStep};
    return formats[choice % std::size(formats)];
}

/// The root stays a container most of the time: nothing else can be done to a scalar one.
PlistType anyType(bool isRoot, std::uint32_t choice) {
    if (isRoot && choice % 8 != 0) {
        return choice / 8 % 2 == 0 ? PlistType::array : PlistType::dictionary;
    }
    return allPlistTypes[choice / 8 % allPlistTypes.size()];
}

/// A position in a container or beyond its ends.
qint64 anyIndex(std::uint32_t choice) {
    return static_cast<qint64>(choice % 8) - 1;
}

}  // namespace

ComparedEditing::Setup ComparedEditing::setup(unsigned seed) {
    return {RandomValues::document(seed), seed % 16 != 3, seed % 2 == 0};
}

ComparedEditing::ComparedEditing(const Setup& setup)
    : comparison_(setup.makesAllNodes),
      undo_(setup.hasHistory ? std::make_unique<UndoManager>() : nullptr),
      editor_(document_, undo_.get()),
      reference_({setup.content, PlistFormat::xml}, setup.hasHistory
                                                        ? ReferenceDocument::History::kept
                                                        : ReferenceDocument::History::none) {
    document_.apply({setup.content, PlistFormat::xml});
    outline_.follow(document_);
    referenceOutline_ = std::make_unique<ReferenceOutline>(reference_.root());
    QObject::connect(&document_, &PlistDocument::treeChanged, &outline_,
                     [this] { ++treeChanges_; });
    actions_ = std::make_unique<ComparedActions>(DocumentActions(document_, outline_, undo_.get()),
                                                 reference_, *referenceOutline_, comparison_);
    compare();
}

ComparedEditing::~ComparedEditing() {
    endGroup();
}

std::optional<QString> ComparedEditing::perform(const RandomOperation& operation) {
    run(operation);
    compare();
    std::optional<QString> difference = comparison_.difference();
    if (difference) {
        *difference += QStringLiteral("\nThe plain model:\n") + reference_.root().text();
    }
    return difference;
}

void ComparedEditing::run(const RandomOperation& operation) {
    switch (operation.kind) {
        case Kind::undo:
        case Kind::redo:
        case Kind::undoAll:
        case Kind::redoAll:
        case Kind::clearHistory:
        case Kind::takeSnapshot:
        case Kind::saveSnapshot:
            return changeHistory(operation);
        case Kind::beginGroup:
            return beginGroup();
        case Kind::endGroup:
            return endGroup();
        case Kind::select:
        case Kind::expand:
        case Kind::collapse:
        case Kind::reveal:
        case Kind::filter:
            return changeOutline(operation);
        case Kind::rename:
        case Kind::changeValue:
        case Kind::changeType:
        case Kind::changeFormat:
        case Kind::add:
        case Kind::remove:
        case Kind::move:
        case Kind::sortKeys:
        case Kind::replaceContent:
            return edit(operation);
        default:
            // They go by the rows, which a group leaves behind until it ends.
            describe(isGroupOpen_ ? QStringLiteral("nothing") : actions_->perform(operation));
    }
}

// --- Edits ---

void ComparedEditing::edit(const RandomOperation& operation) {
    const auto& choices = operation.choices;
    const Known item = chosen(choices[0]);
    const Name name = item.item->name;
    switch (operation.kind) {
        case Kind::rename: {
            const std::string key = RandomValues::key(choices[1]);
            describe(QStringLiteral("rename %1 to %2").arg(textOf(item), quoted(key)));
            const std::optional<PlistEditor::EditError> error = editor_.rename(*item.node, key);
            const std::optional<QString> expected = reference_.rename(name, key);
            require(error.has_value() == expected.has_value(), "refused one rename only");
            require(!error || !expected || error->message() == *expected, "another message");
            break;
        }
        case Kind::changeValue: {
            const PlistValue value = choices[2] % 16 == 0 ? RandomValues::value(choices[1])
                                                          : RandomValues::scalar(choices[1]);
            describe(QStringLiteral("change %1 to %2").arg(textOf(item), TreeText::whole(value)));
            editor_.changeValue(*item.node, value);
            reference_.changeValue(name, value);
            break;
        }
        case Kind::changeType: {
            const PlistType type = anyType(name == reference_.root().name, choices[1]);
            describe(QStringLiteral("change the type of %1 to %2")
                         .arg(textOf(item), TreeText::ofValue(PlistValue::defaultValue(type))));
            editor_.changeType(*item.node, type);
            reference_.changeType(name, type);
            break;
        }
        case Kind::changeFormat:
            describe(QStringLiteral("change the format to %1")
                         .arg(static_cast<int>(anyFormat(choices[1]))));
            editor_.changeFormat(anyFormat(choices[1]));
            reference_.changeFormat(anyFormat(choices[1]));
            break;
        default:
            editTree(operation);
    }
}

void ComparedEditing::editTree(const RandomOperation& operation) {
    const auto& choices = operation.choices;
    const Known target = chosenContainer(choices[0]);
    const Name name = target.item->name;
    const qint64 index = anyIndex(choices[1]);
    const std::vector<Known> items = someChosen(operation, 4);
    switch (operation.kind) {
        case Kind::add:
            return addItems(operation);
        case Kind::remove:
            describe(QStringLiteral("remove ") + textOf(items));
            editor_.remove(nodesOf(items));
            reference_.remove(namesOf(items));
            break;
        case Kind::move:
            describe(QStringLiteral("move %1 to %2 at %3")
                         .arg(textOf(items), textOf(target))
                         .arg(index));
            editor_.move(nodesOf(items), *target.node, index);
            reference_.move(namesOf(items), name, index);
            break;
        case Kind::sortKeys:
            describe(QStringLiteral("sort ") + textOf(target));
            editor_.sortKeys(*target.node);
            reference_.sortKeys(name);
            break;
        default:
            replaceContent(operation);
    }
}

void ComparedEditing::addItems(const RandomOperation& operation) {
    const auto& choices = operation.choices;
    const Known parent = chosenContainer(choices[0]);
    const qint64 index = anyIndex(choices[1]);
    std::vector<PlistNodePtr> nodes;
    std::vector<ReferenceItem> items;
    QStringList texts;
    if (reference_.root().count() < manyItems) {
        for (std::uint32_t i = 0; i < choices[2] % 4; ++i) {
            const std::string key = RandomValues::key(choices[3] + i);
            const PlistValue value = RandomValues::value(choices[4] + i);
            nodes.push_back(PlistNode::create(key, value));
            items.push_back(reference_.newItem(key, value));
            texts += quoted(key) + QStringLiteral(": ") + TreeText::whole(value);
        }
    }
    describe(QStringLiteral("add %1 to %2 at %3")
                 .arg(texts.join(QStringLiteral(", ")), textOf(parent))
                 .arg(index));
    editor_.add(nodes, *parent.node, index);
    reference_.add(items, parent.item->name, index);
}

void ComparedEditing::replaceContent(const RandomOperation& operation) {
    // What is expanded is carried over only where nodes have been made, which the plain model does
    // not know; and from the rows before, which a group would leave out.
    if (!comparison_.makesAllNodes() || isGroupOpen_) {
        return describe(QStringLiteral("nothing"));
    }
    const auto& choices = operation.choices;
    const PlistFile file{RandomValues::document(choices[1]), anyFormat(choices[2])};
    const QString name = QStringLiteral("Revert");
    describe(QStringLiteral("replace all by ") + TreeText::whole(file.root));
    editor_.replaceContent(PlistNode::create({}, file.root), file.format, name);
    reference_.replaceContent(file, name);
}

// --- Groups and history ---

void ComparedEditing::beginGroup() {
    describe(QStringLiteral("begin a group"));
    if (!isGroupOpen_) {
        isGroupOpen_ = true;
        document_.beginEditing();
        reference_.beginGroup();
        if (undo_) {
            undo_->beginGroup();
        }
    }
}

void ComparedEditing::endGroup() {
    describe(QStringLiteral("end the group"));
    if (isGroupOpen_) {
        isGroupOpen_ = false;
        if (undo_) {
            undo_->endGroup();
        }
        reference_.endGroup();
        document_.endEditing();
    }
}

void ComparedEditing::changeHistory(const RandomOperation& operation) {
    if (!undo_ || isGroupOpen_) {
        return describe(QStringLiteral("nothing"));
    }
    switch (operation.kind) {
        case Kind::undo:
        case Kind::undoAll:
            describe(operation.kind == Kind::undo ? QStringLiteral("undo")
                                                  : QStringLiteral("undo all"));
            do {
                undo_->undo();
                reference_.undo();
                compare();
            } while (operation.kind == Kind::undoAll && undo_->canUndo());
            break;
        case Kind::redo:
        case Kind::redoAll:
            describe(operation.kind == Kind::redo ? QStringLiteral("redo")
                                                  : QStringLiteral("redo all"));
            do {
                undo_->redo();
                reference_.redo();
                compare();
            } while (operation.kind == Kind::redoAll && undo_->canRedo());
            break;
        case Kind::clearHistory:
            describe(QStringLiteral("clear the history"));
            undo_->clear();
            reference_.clearHistory();
            break;
        case Kind::takeSnapshot:
            describe(QStringLiteral("take a snapshot for saving"));
            takenState_ = undo_->state();
            takenReferenceState_ = reference_.state();
            break;
        default:
            describe(QStringLiteral("save the snapshot"));
            undo_->setSavedState(takenState_);
            reference_.setSavedState(takenReferenceState_);
    }
}

// --- The outline ---

void ComparedEditing::changeOutline(const RandomOperation& operation) {
    if (isGroupOpen_) {
        return describe(QStringLiteral("nothing"));
    }
    const std::vector<Known> items = someChosen(operation, 5);
    switch (operation.kind) {
        case Kind::select: {
            describe(QStringLiteral("select ") + textOf(items));
            NodeIdSet ids;
            std::set<Name> names;
            for (const Known& item : items) {
                ids.insert(item.node->id());
                names.insert(item.item->name);
            }
            outline_.select(ids);
            referenceOutline_->select(names);
            break;
        }
        case Kind::reveal:
            describe(QStringLiteral("reveal ") + textOf(items.front()));
            outline_.reveal(*items.front().node);
            referenceOutline_->reveal(reference_.root(), items.front().item->name);
            break;
        case Kind::filter:
            setFilter(operation);
            break;
        default:
            expandOrCollapse(operation);
    }
}

void ComparedEditing::expandOrCollapse(const RandomOperation& operation) {
    const std::vector<Known> items = someChosen(operation, 3);
    const bool expands = operation.kind == Kind::expand;
    const bool wholeSubtree = operation.choices[1] % 3 == 0;
    describe(QStringLiteral("%1 %2%3").arg(
        expands ? QStringLiteral("expand") : QStringLiteral("collapse"), textOf(items),
        wholeSubtree ? QStringLiteral(" and all below") : QString()));
    outline_.setExpanded(
        nodesOf(items),
        expands ? OutlineState::Expansion::expand : OutlineState::Expansion::collapse,
        wholeSubtree ? OutlineState::Reach::wholeSubtree : OutlineState::Reach::nodeAlone);
    if (expands) {
        referenceOutline_->expand(reference_.root(), namesOf(items), wholeSubtree);
    } else {
        referenceOutline_->collapse(reference_.root(), namesOf(items), wholeSubtree);
    }
}

void ComparedEditing::setFilter(const RandomOperation& operation) {
    const auto& choices = operation.choices;
    if (choices[1] % 2 == 0) {
        describe(QStringLiteral("show all"));
        outline_.setFilter(std::nullopt);
        referenceOutline_->setFilter(reference_.root(), std::nullopt);
        return;
    }
    // Mostly with all that is above, as a search filters, but not always.
    NodeIdSet ids;
    std::set<Name> names;
    const std::vector<Known> items = someChosen(operation, 5);
    describe(QStringLiteral("show only ") + textOf(items));
    for (const Known& item : items) {
        for (PlistNode* node = item.node; node != nullptr; node = node->parent()) {
            ids.insert(node->id());
            names.insert(*comparison_.nameOf(node->id()));
            if (choices[2] % 8 == 0) {
                break;
            }
        }
    }
    outline_.setFilter(ids);
    referenceOutline_->setFilter(reference_.root(), names);
}

// --- Choices ---

// Mostly: what is done to containers does nothing to others.
ComparedEditing::Known ComparedEditing::chosenContainer(std::uint32_t choice) const {
    std::vector<Known> containers;
    std::ranges::copy_if(comparison_.known(), std::back_inserter(containers),
                         [](const Known& item) { return item.item->isContainer(); });
    if (containers.empty() || choice % 8 == 0) {
        return chosen(choice / 8);
    }
    return containers[choice / 8 % containers.size()];
}

std::vector<ComparedEditing::Known> ComparedEditing::someChosen(const RandomOperation& operation,
                                                                std::uint32_t most) const {
    std::vector<Known> items;
    const std::uint32_t count = 1 + operation.choices[5] % most;
    for (std::uint32_t i = 0; i < count; ++i) {
        // Large odd numbers make the later ones depend on all digits of the choice.
        items.push_back(chosen(operation.choices[4] / 7 + i * (operation.choices[3] | 1U)));
    }
    return items;
}

std::vector<ComparedEditing::Name> ComparedEditing::namesOf(const std::vector<Known>& items) {
    std::vector<Name> names;
    std::ranges::transform(items, std::back_inserter(names),
                           [](const Known& item) { return item.item->name; });
    return names;
}

std::vector<PlistNodePtr> ComparedEditing::nodesOf(const std::vector<Known>& items) {
    std::vector<PlistNodePtr> nodes;
    std::ranges::transform(items, std::back_inserter(nodes),
                           [](const Known& item) { return PlistNodePtr(item.node); });
    return nodes;
}

QString ComparedEditing::textOf(const Known& item) {
    return QStringLiteral("#%1 (%2: %3)")
        .arg(item.item->name)
        .arg(quoted(item.item->key), TreeText::ofValue(item.item->scalar));
}

QString ComparedEditing::textOf(const std::vector<Known>& items) {
    QStringList texts;
    std::ranges::transform(items, std::back_inserter(texts),
                           [](const Known& item) { return textOf(item); });
    return texts.join(QStringLiteral(", "));
}

// --- Comparing ---

void ComparedEditing::compare() {
    referenceOutline_->follow(reference_.root(), reference_.treeChanges());
    comparison_.compareDocuments(document_, reference_);
    require(treeChanges_ == reference_.treeChanges(), "another number of changes of the tree");
    if (isGroupOpen_) {
        return;
    }
    if (undo_) {
        comparison_.compareHistories(*undo_, reference_);
    }
    comparison_.compareOutlines(outline_, *referenceOutline_);
}
