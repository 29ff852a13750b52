#include "app/desktop/session/SessionBus.h"

#include <sys/stat.h>

#include <QByteArray>

namespace {

constexpr auto addressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// Where the bus of a user is when nothing else says it (D-Bus Specification, "Well-known Message
/// Bus Instances").
bool hasUserBus() {
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    struct stat status {};
    return !folder.isEmpty() && ::stat((folder + "/bus").constData(), &status) == 0 &&
           S_ISSOCK(status.st_mode);
}

}  // namespace

void SessionBus::useOnlyIfThere() {
    if (qEnvironmentVariableIsEmpty(addressVariable) && !hasUserBus()) {
        qputenv(addressVariable, "disabled:");
    }
}
