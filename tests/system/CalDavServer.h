#pragma once

#include "tests/system/PrivateBus.h"

#include <QDir>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

namespace tessaly {

/// A CalDAV server on this machine, Radicale, with the collections of the user "me".
class CalDavServer
{
public:
    CalDavServer()
    {
        QTcpServer free;
        (void)free.listen(QHostAddress::LocalHost);
        m_port = free.serverPort();
    }

    [[nodiscard]] int port() const { return m_port; }
    /// Where an account finds the collection.
    [[nodiscard]] static QString path(const QString &collection) { return QStringLiteral("/me/%1/").arg(collection); }

    void addCollection(const QString &name)
    {
        const QString folder = folderOf(name);
        QDir().mkpath(folder);
        write(folder + QStringLiteral("/.Radicale.props"),
              R"({"tag": "VCALENDAR", "C:supported-calendar-component-set": "VEVENT"})");
    }
    /// With a password, or open to everybody where it is empty. False where it does not answer in time.
    [[nodiscard]] bool start(const QByteArray &password = {})
    {
        const QString users = m_directory.filePath(QStringLiteral("users"));
        const QString configuration = m_directory.filePath(QStringLiteral("radicale.conf"));
        write(users, "me:" + password + '\n');
        write(configuration, "[server]\nhosts = 127.0.0.1:" + QByteArray::number(m_port) + "\n[auth]\ntype = " +
                                 (password.isEmpty() ? QByteArray("none") : QByteArray("htpasswd")) +
                                 "\nhtpasswd_filename = " + users.toUtf8() +
                                 "\nhtpasswd_encryption = plain\n[rights]\ntype = owner_only\n[web]\ntype = none\n"
                                 "[storage]\nfilesystem_folder = " +
                                 m_directory.filePath(QStringLiteral("collections")).toUtf8() + '\n');
        m_process.start(QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral("-m"), QStringLiteral("radicale"), QStringLiteral("-C"), configuration});
        return QTest::qWaitFor(
            [this] {
                QTcpSocket socket;
                socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(m_port));
                return socket.waitForConnected(100);
            },
            20'000);
    }
    void stop() { m_process.stop(); }

    /// The names of the events' files.
    [[nodiscard]] QStringList files(const QString &collection) const
    {
        return QDir(folderOf(collection)).entryList({QStringLiteral("*.ics")}, QDir::Files);
    }
    [[nodiscard]] QByteArray text(const QString &collection, const QString &file) const
    {
        QFile source(folderOf(collection) + u'/' + file);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }
    /// As another client of the server would.
    [[nodiscard]] bool put(const QString &collection, const QString &file, const QByteArray &vevents)
    {
        return send("PUT", collection, file,
                    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//peer//EN\r\n" + vevents + "END:VCALENDAR\r\n");
    }
    [[nodiscard]] bool remove(const QString &collection, const QString &file)
    {
        return send("DELETE", collection, file, {});
    }

private:
    [[nodiscard]] QString folderOf(const QString &collection) const
    {
        return m_directory.filePath(QStringLiteral("collections/collection-root/me/") + collection);
    }
    static void write(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        (void)file.open(QIODevice::WriteOnly);
        file.write(text);
    }
    [[nodiscard]] bool send(const QByteArray &verb, const QString &collection, const QString &file,
                            const QByteArray &body)
    {
        QNetworkRequest request(
            QUrl(QStringLiteral("http://127.0.0.1:%1%2%3").arg(QString::number(m_port), path(collection), file)));
        request.setRawHeader("Authorization", "Basic " + QByteArray("me:secret").toBase64());
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("text/calendar; charset=utf-8"));
        const std::unique_ptr<QNetworkReply> reply(m_network.sendCustomRequest(request, verb, body));
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        return reply->error() == QNetworkReply::NoError;
    }

    QTemporaryDir m_directory;
    Service m_process;
    QNetworkAccessManager m_network;
    int m_port = 0;
};

} // namespace tessaly
