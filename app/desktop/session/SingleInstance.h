#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <chrono>
#include <cstdint>
#include <memory>

#include "app/desktop/session/LaunchToken.h"

class ApplicationService;

/// One running program for all that the user opens: who comes first owns a name on the message bus,
/// and who comes later hands over what it was started with. Without a bus each runs alone. Belongs
/// to the main thread.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// The name on the bus, and the object there, as the Desktop Entry Specification derives it.
    static constexpr auto serviceName = "com.ventrel.Tabulet";
    static constexpr auto objectPath = "/com/ventrel/Tabulet";

    /// How long to wait for a running program that does not answer.
    static constexpr std::chrono::milliseconds replyTimeout{5000};

    enum class Role : std::uint8_t {
        first,       ///< this is the program; others will hand over to it
        handedOver,  ///< another one has taken everything; nothing is left to do
        alone,       ///< there is no bus, or the other one does not answer
    };
    Q_ENUM(Role)

    /// Keeps the message library from starting a bus of its own, as another process, where the
    /// desktop has none. To be called before anything else uses the bus.
    static void useBusOnlyIfThere();

    explicit SingleInstance(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                            QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Finds out which role this has, and hands over the files if there is another program. Blocks
    /// for little more than `timeout` if that does not answer. Once.
    Role start(const QStringList& paths, const LaunchToken& token,
               std::chrono::milliseconds timeout = replyTimeout);

    /// Gives the name away, before the program ends. A call that is already on its way is refused,
    /// and who made it becomes the first.
    void stop();

Q_SIGNALS:
    /// Another start has handed over: the absolute paths of its files, none for a start without
    /// files.
    void handedOver(const QStringList& paths, const LaunchToken& token);

    /// The desktop's menu for the program was asked for a new window.
    void newWindowChosen(const LaunchToken& token);

private:
    enum class Answer : std::uint8_t { taken, refused, none };

    Answer handOver(const QStringList& paths, const LaunchToken& token,
                    std::chrono::milliseconds timeout);

    QDBusConnection bus_;
    std::unique_ptr<ApplicationService> service_;
};
