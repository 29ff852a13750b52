#include "tests/model/support/IntervalCount.h"

#include <QLoggingCategory>
#include <QMutexLocker>
#include <utility>

#include "app/model/runtime/Signposter.h"

namespace {

IntervalCount* listener = nullptr;

}  // namespace

IntervalCount::IntervalCount() : before_(qInstallMessageHandler(hear)) {
    listener = this;
    QLoggingCategory::setFilterRules(QStringLiteral("com.ventrel.Tabulet.debug=true"));
}

IntervalCount::~IntervalCount() {
    QLoggingCategory::setFilterRules({});
    listener = nullptr;
    qInstallMessageHandler(before_);
}

QString IntervalCount::takeNames() {
    const QMutexLocker lock(&mutex_);
    return std::exchange(names_, {}).join(QLatin1Char(' '));
}

void IntervalCount::hear(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (QLatin1String(context.category) == QLatin1String(Signposter::category().categoryName())) {
        const QMutexLocker lock(&listener->mutex_);
        listener->names_ += text.section(QLatin1Char(':'), 0, 0);
    } else {
        listener->before_(type, context, text);
    }
}
