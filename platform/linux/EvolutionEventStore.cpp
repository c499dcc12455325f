#include "platform/linux/EvolutionEventStore.h"

#include "platform/common/NullEventStore.h"
#include "platform/linux/eds/EdsModule.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFileInfo>
#include <QLibrary>

namespace tessaly {

namespace {

/// Where the module is: beside the program in its build directory, or where it was installed. Empty where it is not.
/// The planner without a window is in a folder beside the module.
QString moduleFile()
{
    const QString program = QCoreApplication::applicationDirPath();
    for (const char *folder : {"/modules", "/../modules", "/..", "/" TESSALY_MODULES_FROM_PROGRAM}) {
        const QString file = program + QLatin1String(folder) + QStringLiteral("/libtessaly_eds.so");
        if (QFileInfo::exists(file))
            return file;
    }
    return {};
}

} // namespace

EvolutionEventStore::EvolutionEventStore(const UserCalendar &calendar)
    : m_calendar(calendar), m_current(std::make_unique<NullEventStore>())
{
}

EvolutionEventStore::~EvolutionEventStore() = default;

bool EvolutionEventStore::isOffered()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || moduleFile().isEmpty())
        return false;
    const QString service = QStringLiteral("org.gnome.evolution.dataserver.Calendar8");
    const auto isListed = [&](const QDBusReply<QStringList> &names) {
        return names.isValid() && names.value().contains(service);
    };
    return isListed(bus.interface()->activatableServiceNames()) || isListed(bus.interface()->registeredServiceNames());
}

void EvolutionEventStore::requestAccess(AccessCompletion completion)
{
    if (!m_isLoaded) {
        QLibrary library(moduleFile());
        // GLib's types cannot be taken out of a process again.
        library.setLoadHints(QLibrary::PreventUnloadHint);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): QLibrary gives functions of any type as one
        if (const auto create = reinterpret_cast<EdsFactory>(library.resolve(edsFactoryName))) {
            m_current.reset(create(m_calendar));
            m_current->setChangeHandler(m_changeHandler);
            m_isLoaded = true;
        } else {
            qWarning("%s", qUtf8Printable(library.errorString()));
        }
    }
    current().requestAccess(std::move(completion));
}

void EvolutionEventStore::setChangeHandler(std::function<void()> handler)
{
    m_changeHandler = std::move(handler);
    current().setChangeHandler(m_changeHandler);
}

} // namespace tessaly
