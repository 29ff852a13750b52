#include "tests/model/support/ChangeRecorder.h"

#include <string>

#include "app/model/tree/PlistNode.h"

void ChangeRecorder::handleNodeChange(PlistNode& node, PlistNodeChanges changes,
                                      std::optional<PlistNodeRun> run) {
    QStringList parts;
    if (changes.testFlag(PlistNodeChange::key)) {
        parts += QStringLiteral("key");
    }
    if (changes.testFlag(PlistNodeChange::type)) {
        parts += QStringLiteral("type");
    }
    if (changes.testFlag(PlistNodeChange::scalar)) {
        parts += QStringLiteral("scalar");
    }
    if (changes.testFlag(PlistNodeChange::childCount)) {
        parts += QStringLiteral("childCount");
    }
    if (changes.testFlag(PlistNodeChange::children)) {
        parts += QStringLiteral("children");
    }
    heard_ += QString::fromStdString(std::string(node.key().view())) + QStringLiteral(": ") +
              parts.join(QLatin1Char('|'));
    if (run) {
        heard_.back() += run->added > 0 ? QStringLiteral(" +%1").arg(run->added)
                                        : QStringLiteral(" -%1").arg(run->removed);
        heard_.back() += QStringLiteral(" at %1").arg(run->first);
    }
}
