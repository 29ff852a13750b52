#include "app/ui/editors/DataValueEditor.h"

#include "app/model/editing/PlistDocument.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/DataPopover.h"
#include "app/ui/text/RowText.h"

DataPopover* DataValueEditor::open(const DocumentActions& actions, const OutlineRow& row,
                                   QWidget& window) {
    const PlistNodePtr node(&row.node());
    const auto apply = [actions, node](DataPopover::Bytes bytes) {
        actions.changeValue(*node, PlistValue::data(bytes));
    };
    const PlistValue data = node->scalar();
    auto* popover = new DataPopover(data.dataValue(), RowText::key(row), apply, &window);
    popover->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&actions.document(), &PlistDocument::nodeChanged, popover,
                     [popover, node](const PlistNode* changed) {
                         if (changed != node.get()) {
                             return;
                         }
                         if (node->type() == PlistType::data) {
                             const PlistValue changedData = node->scalar();
                             popover->setBytes(changedData.dataValue());
                         } else {
                             popover->close();
                         }
                     });
    popover->open();
    return popover;
}
