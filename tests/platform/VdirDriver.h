#pragma once

#include "platform/common/vdir/VdirEventStore.h"
#include "platform/fake/FakeClock.h"
#include "tests/platform/EventStoreContract.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

namespace tessaly {

/// A folder of calendars in which another program writes, each file in one step.
class VdirDriver final : public EventStoreDriver
{
public:
    VdirDriver()
    {
        m_clock.setZone(QTimeZone("Europe/Vienna"));
        addCalendar(QStringLiteral("Home"));
        addCalendar(QStringLiteral("Work"));
    }

    std::unique_ptr<EventStore> makeStore() override
    {
        return std::make_unique<VdirEventStore>(VdirPlace::given(folder()), m_clock);
    }
    [[nodiscard]] Instant now() const override { return m_clock.now(); }

    void putEvent(const QString &calendarTitle, const OutsideEvent &event) override
    {
        // A second file with the event would be one too many.
        write(calendarTitle + u'/' + QString::fromLatin1(QUrl::toPercentEncoding(event.uid)) + QStringLiteral(".ics"),
              "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + eventText(event) + "END:VCALENDAR\r\n");
    }
    void dropEvent(const QString &calendarTitle, const QString &uid) override
    {
        const QString file = fileOf(calendarTitle, uid);
        if (!file.isEmpty())
            QFile::remove(path(file));
    }
    QByteArray text(const QString &calendarTitle, const QString &uid) override
    {
        const QString file = fileOf(calendarTitle, uid);
        return file.isEmpty() ? QByteArray() : read(file);
    }
    void addCalendar(const QString &title) override { QDir().mkpath(path(title)); }
    void dropCalendar(const QString &title) override { QDir(path(title)).removeRecursively(); }
    bool makeReadOnly(const QString &title) override
    {
        QFile::setPermissions(path(title), QFile::ReadOwner | QFile::ExeOwner);
        // The superuser may write everywhere.
        return !QFileInfo(path(title)).isWritable();
    }

    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QString path(const QString &name) const { return folder() + u'/' + name; }
    [[nodiscard]] QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString &name, const QByteArray &text) const
    {
        const QString temporary = path(name) + QStringLiteral(".tmp");
        writeInPlace(name + QStringLiteral(".tmp"), text);
        QVERIFY(std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path(name)).constData()) == 0);
    }
    void writeInPlace(const QString &name, const QByteArray &text) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

private:
    [[nodiscard]] QString fileOf(const QString &calendarTitle, const QString &uid) const
    {
        for (const QString &name : QDir(path(calendarTitle)).entryList({QStringLiteral("*.ics")})) {
            const QString file = calendarTitle + u'/' + name;
            if (read(file).contains("UID:" + uid.toUtf8() + "\r\n"))
                return file;
        }
        return {};
    }

    FakeClock m_clock{Instant::fromUnixSeconds(1'780'300'000)};
    QTemporaryDir m_folder;
};

} // namespace tessaly
