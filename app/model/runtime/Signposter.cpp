#include "app/model/runtime/Signposter.h"

namespace {

constexpr double nanosecondsPerMillisecond = 1e6;

}  // namespace

const QLoggingCategory& Signposter::category() {
    static const QLoggingCategory instance("com.ventrel.Tabulet", QtWarningMsg);
    return instance;
}

Signposter::Interval::Interval(const char* name) : name_(name) {
    if (category().isDebugEnabled()) {
        timer_.start();
    }
}

Signposter::Interval::~Interval() {
    if (timer_.isValid()) {
        const auto elapsed = static_cast<double>(timer_.nsecsElapsed());
        qCDebug(category, "%s: %.3f ms", name_, elapsed / nanosecondsPerMillisecond);
    }
}
