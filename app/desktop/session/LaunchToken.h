#pragma once

#include <QByteArray>
#include <QMetaType>

/// By which a desktop recognises the windows of a program that it started for the user, and lets
/// them come to the front: the activation token of the XDG Activation protocol (Wayland) and the
/// startup id of the Startup Notification Protocol (X11). Either may be empty.
struct LaunchToken {
    QByteArray activationToken;
    QByteArray startupId;

    /// That of this process. To be called before there is an application, which takes it away.
    static LaunchToken ofThisProcess();

    /// Has the next window that is activated use this. On X11 there is no public way to say so;
    /// there windows are activated as of the time of the last event.
    void useForNextWindow() const;

    /// Tells an X11 desktop that what it started is there, which ends its busy cursor. The toolkit
    /// does so by itself for the first window of a process, but not for one that is shown for
    /// another start.
    void endStartup() const;
};
