// Claims the directory of its first argument with the token of its second, or for the background when that is
// "background". Says on its standard output what came of it, and then what it is asked for, until its standard input
// ends.
#include "platform/common/SingleInstance.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

using namespace tessaly;

namespace {

void say(const QByteArray &line)
{
    std::puts(line.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    SingleInstance instance(QCoreApplication::arguments().at(1));
    const QByteArray token = QCoreApplication::arguments().at(2).toUtf8();
    const Result<SingleInstance::Role> role =
        instance.claim({.isWindowWanted = token != "background", .activationToken = token});
    if (!role) {
        say(role.error().code == ErrorCode::StorageLocked ? "locked" : "unwritable");
        return 1;
    }
    if (role.value() == SingleInstance::Role::Second) {
        say("second");
        return 0;
    }
    QObject::connect(&instance, &SingleInstance::activationRequested,
                     [](const QByteArray &token) { say("asked " + token); });
    QObject::connect(&instance, &SingleInstance::residenceRequested, [] { say("resident"); });
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    say("first");
    return QCoreApplication::exec();
}
