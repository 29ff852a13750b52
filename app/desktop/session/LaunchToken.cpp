#include "app/desktop/session/LaunchToken.h"

namespace {

constexpr auto activationVariable = "XDG_ACTIVATION_TOKEN";
constexpr auto startupVariable = "DESKTOP_STARTUP_ID";

}  // namespace

LaunchToken LaunchToken::ofThisProcess() {
    return {qgetenv(activationVariable), qgetenv(startupVariable)};
}

void LaunchToken::useForNextWindow() const {
    // Launchers that know one kind only put the token there.
    const QByteArray& token = activationToken.isEmpty() ? startupId : activationToken;
    if (!token.isEmpty()) {
        qputenv(activationVariable, token);
    }
}
