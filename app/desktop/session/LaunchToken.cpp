#include "app/desktop/session/LaunchToken.h"

#include <xcb/xcb.h>

#include <QByteArrayView>
#include <QGuiApplication>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>

namespace {

constexpr auto activationVariable = "XDG_ACTIVATION_TOKEN";
constexpr auto startupVariable = "DESKTOP_STARTUP_ID";

xcb_atom_t atom(xcb_connection_t* x11, QByteArrayView name) {
    const auto cookie =
        xcb_intern_atom(x11, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> reply(
        xcb_intern_atom_reply(x11, cookie, nullptr), std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// As the protocol has it: what means something in a message is marked.
QByteArray quoted(const QByteArray& text) {
    QByteArray result;
    for (const char each : text) {
        if (each == ' ' || each == '"' || each == '\\') {
            result += '\\';
        }
        result += each;
    }
    return result;
}

/// Sends a message of the Startup Notification Protocol to all that listen at the root window, in
/// pieces of 20 bytes with a NUL at the end. A window of our own tells which pieces belong
/// together.
void broadcast(xcb_connection_t* x11, const QByteArray& message) {
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(x11)).data;
    const xcb_window_t sender = xcb_generate_id(x11);
    xcb_create_window(x11, XCB_COPY_FROM_PARENT, sender, screen.root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = sender;
    event.type = atom(x11, "_NET_STARTUP_INFO_BEGIN");
    const QByteArrayView whole(message.constData(), message.size() + 1);
    constexpr auto pieceSize = qsizetype{sizeof event.data.data8};
    for (qsizetype start = 0; start < whole.size(); start += pieceSize) {
        const QByteArrayView piece =
            whole.sliced(start).first(std::min(pieceSize, whole.size() - start));
        std::fill(std::begin(event.data.data8), std::end(event.data.data8), std::uint8_t{0});
        std::copy(piece.begin(), piece.end(), std::begin(event.data.data8));
        xcb_send_event(x11, 0, screen.root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&event));
        event.type = atom(x11, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(x11, sender);
    xcb_flush(x11);
}

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

void LaunchToken::endStartup() const {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 != nullptr && !startupId.isEmpty()) {
        broadcast(x11->connection(), "remove: ID=" + quoted(startupId));
    }
}
