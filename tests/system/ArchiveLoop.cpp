// A planner without a window that imports two archives in turn and exports what it has, again and again, until it is
// killed.
//
// ArchiveLoop DATA-DIRECTORY ARCHIVE ARCHIVE EXPORT: prints a line once it has read what is stored.

#include "tests/system/PlannerOnDisk.h"

#include <QCoreApplication>

#include <cstdio>

using namespace tessaly;

namespace {

class Planner
{
public:
    Planner(PlannerStore &store, const QStringList &arguments) : m_archive(store.archive()), m_arguments(arguments) {}

    void importNext()
    {
        m_archive.read(m_arguments.at(m_turn++ % 2), [this](const Result<void> &imported) {
            if (imported)
                exportAll();
            else
                QCoreApplication::exit(3);
        });
    }

private:
    void exportAll()
    {
        m_archive.write(m_arguments.at(2), [this](const Result<void> &exported) {
            if (exported)
                importNext();
            else
                QCoreApplication::exit(4);
        });
    }

    PlannerArchive &m_archive;
    QStringList m_arguments;
    qsizetype m_turn = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto onDisk = PlannerOnDisk::open(arguments.value(1));
    if (!onDisk)
        return 2;
    std::puts("ready");
    std::fflush(stdout);
    Planner planner(onDisk->store(), arguments.mid(2));
    planner.importNext();
    return QCoreApplication::exec();
}
