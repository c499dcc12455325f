#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <array>

#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
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

    [[nodiscard]] static QString fillerName() { return QStringLiteral("filler"); }
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
    /// Writes until this many blocks are left.
    void fillBut(int freeBlocks) const
    {
        fill();
        QFile filler(fillerPath());
        QVERIFY(filler.resize(filler.size() - freeBlocks * blockSize()));
    }
    [[nodiscard]] static qint64 blockSize() { return sysconf(_SC_PAGESIZE); }
    void makeRoom() const { QVERIFY(QFile::remove(fillerPath())); }

private:
    [[nodiscard]] QByteArray path() const { return m_directory.path().toLocal8Bit(); }
    [[nodiscard]] QString fillerPath() const { return m_directory.filePath(fillerName()); }

    QTemporaryDir m_directory;
    bool m_isMounted = false;
};

/// While it lives, the permissions of files bind this thread, which those of root, also of a namespace, do not.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        m_isOrdinary = syscall(SYS_capget, &m_header, m_former.data()) == 0;
        auto rights = m_former;
        rights[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_FOWNER);
        m_isOrdinary = m_isOrdinary && syscall(SYS_capset, &m_header, rights.data()) == 0;
    }
    ~OrdinaryUser()
    {
        if (m_isOrdinary && syscall(SYS_capset, &m_header, m_former.data()) != 0)
            qFatal("cannot take the former rights again");
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;
    [[nodiscard]] bool isOrdinary() const { return m_isOrdinary; }

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> m_former{};
    bool m_isOrdinary = false;
};

/// Gives the process a view of the mounts of its own, as root or in a user namespace. Must run before threads start.
inline void leaveSharedMounts()
{
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return;
        // Files stay those of the user, who is the only one that the namespace knows.
        const auto put = [](const char *path, const QByteArray &text) {
            QFile file{QString::fromLatin1(path)};
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            QCOMPARE(file.write(text), text.size());
        };
        put("/proc/self/uid_map", user + ' ' + user + " 1");
        put("/proc/self/setgroups", "deny");
        put("/proc/self/gid_map", group + ' ' + group + " 1");
    }
    mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
}

} // namespace tessaly
