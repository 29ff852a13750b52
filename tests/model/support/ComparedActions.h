#pragma once

#include <QString>
#include <cstddef>
#include <vector>

#include "app/model/actions/DocumentActions.h"
#include "app/model/actions/PlistTransfer.h"
#include "tests/model/support/ModelComparison.h"
#include "tests/model/support/RandomOperations.h"
#include "tests/model/support/ReferenceActions.h"

/// Does what users do both to the model and to the plain one.
class ComparedActions {
public:
    /// All must outlive it.
    ComparedActions(const DocumentActions& actions, ReferenceDocument& document,
                    ReferenceOutline& outline, ModelComparison& comparison)
        : actions_(actions),
          referenceDocument_(document),
          referenceOutline_(outline),
          reference_(document, outline),
          comparison_(comparison) {}

    /// Does one operation, if it is one of a user, and tells it in words.
    QString perform(const RandomOperation& operation);

private:
    using Known = ModelComparison::Known;

    QString changeItem(const RandomOperation& operation);
    QString changeRows(const RandomOperation& operation);
    QString transfer(const RandomOperation& operation);
    QString drop(const RandomOperation& operation);
    void compareTransfers(const PlistTransfer& transfer,
                          const ReferenceActions::Transfer& expected);

    Known chosen(std::uint32_t choice) const;
    Known chosenRow(std::uint32_t choice) const;
    bool mayGrow() const;

    DocumentActions actions_;
    ReferenceDocument& referenceDocument_;
    ReferenceOutline& referenceOutline_;
    ReferenceActions reference_;
    ModelComparison& comparison_;
    PlistTransfer clipboard_;
    ReferenceActions::Transfer referenceClipboard_;
};
