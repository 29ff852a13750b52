#pragma once

#include "PlistCore/PlistFormat.h"
#include "app/model/OutlineState.h"

class PlistDocument;

/// What commands and views do to a document and to the outline that a window shows of it. A small
/// record without state of its own; both must outlive it.
class DocumentActions {
public:
    DocumentActions(PlistDocument& document, OutlineState& outline) noexcept
        : document_(&document), outline_(&outline) {}

    PlistDocument& document() const noexcept { return *document_; }
    OutlineState& outline() const noexcept { return *outline_; }

    /// Sets the format that the document will be saved in. Does nothing for the OpenStep form,
    /// which can only be read.
    void changeFormat(PlistFormat format) const;

    /// Expands the selected containers, with all that is below them if asked.
    OutlineState::ExpandResult expandSelected(OutlineState::Reach reach) const;

    /// Collapses the selected containers, with all that is below them if asked. Without that, a
    /// single selected row that is not an expanded container hands the selection to its parent.
    void collapseSelected(OutlineState::Reach reach) const;

private:
    PlistDocument* document_;
    OutlineState* outline_;
};
