#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tessaly {

/// A small file system of the test's own, seen by no other process.
class SmallDisk
{
public:
    SmallDisk() { m_isMounted = mount("tessaly", path().constData(), "tmpfs", 0, "size=8m") == 0; }
    ~SmallDisk()
    {
        if (m_isMounted)
            umount2(path().constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isMounted() const { return m_isMounted; }
    [[nodiscard]] QString directory() const { return m_directory.path(); }
    [[nodiscard]] bool remount(unsigned long flags) const
    {
        return mount("tessaly", path().constData(), "tmpfs", MS_REMOUNT | flags, "size=8m") == 0;
    }

    /// Writes until not a byte is left.
    void fill() const
    {
        QFile filler(fillerPath());
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        for (qint64 size : {65536, 4096, 1}) {
            while (filler.write(QByteArray(size, 'x')) == size) {
            }
        }
    }
    void makeRoom() const { QVERIFY(QFile::remove(fillerPath())); }

private:
    [[nodiscard]] QByteArray path() const { return m_directory.path().toLocal8Bit(); }
    [[nodiscard]] QString fillerPath() const { return m_directory.filePath(QStringLiteral("filler")); }

    QTemporaryDir m_directory;
    bool m_isMounted = false;
};

/// Acts as a user without the rights of root while it lives.
class OrdinaryUser
{
public:
    OrdinaryUser() { m_isOrdinary = geteuid() != 0 || seteuid(65534) == 0; }
    ~OrdinaryUser()
    {
        if (seteuid(getuid()) != 0)
            qFatal("cannot become the former user again");
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;
    [[nodiscard]] bool isOrdinary() const { return m_isOrdinary; }

private:
    bool m_isOrdinary = false;
};

/// Gives the process a view of the mounts of its own, as root or in a user namespace. Must run before threads start.
inline void leaveSharedMounts()
{
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return;
    mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
}

} // namespace tessaly
