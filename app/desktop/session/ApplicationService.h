#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <chrono>

#include "app/desktop/session/LaunchToken.h"

/// What the program does for others on the message bus: the interface org.freedesktop.Application
/// of the Desktop Entry Specification ("D-Bus Activation"). Belongs to the main thread.
class ApplicationService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using QObject::QObject;

    /// The interface, for callers.
    static constexpr auto interfaceName = "org.freedesktop.Application";

    /// A call's platform data. A call that is only seen after the deadline is not carried out: who
    /// made it does not wait any more, and has found another way.
    static QVariantMap platformData(const LaunchToken& token,
                                    std::chrono::steady_clock::time_point deadline);

    /// From now on calls fail as if there were no such object.
    void stop() noexcept { isStopped_ = true; }

public Q_SLOTS:
    // The names are those of the interface.

    /// Shows the program, as when it is started without files.
    void Activate(const QVariantMap& platformData);  // NOLINT

    /// Opens the files at these addresses.
    void Open(const QStringList& uris, const QVariantMap& platformData);  // NOLINT

    /// The program has no actions.
    void ActivateAction(const QString& name, const QVariantList& parameters,  // NOLINT
                        const QVariantMap& platformData);

Q_SIGNALS:
    void activated(const LaunchToken& token);
    void opened(const QStringList& paths, const LaunchToken& token);

private:
    /// Answers the call with an error after `stop` and after its deadline.
    bool refuses(const QVariantMap& platformData) const;

    bool isStopped_ = false;
};
