#include "tests/system/LoopbackServer.h"

#include <QFile>
#include <QProcess>
#include <QSslSocket>
#include <QTemporaryDir>

namespace tessaly {

void LoopbackServer::incomingConnection(qintptr descriptor)
{
    auto *socket = m_tls ? new QSslSocket(this) : new QTcpSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(*socket); });
    if (auto *secure = qobject_cast<QSslSocket *>(socket)) {
        secure->setSslConfiguration(*m_tls);
        secure->startServerEncryption();
    }
}

void LoopbackServer::serve(QTcpSocket &socket)
{
    const QByteArray head = socket.peek(socket.bytesAvailable());
    if (!head.contains("\r\n\r\n"))
        return;
    (void)socket.readAll();
    m_requests.append(head);
    const QByteArray path = head.split(' ').value(1);
    if (const auto answer = m_answers.constFind(path); answer != m_answers.cend())
        (*answer)(socket);
    else
        socket.abort();
}

std::optional<Certificate> makeCertificate()
{
    const QTemporaryDir directory;
    const QString key = directory.filePath(QStringLiteral("key.pem"));
    const QString certificate = directory.filePath(QStringLiteral("certificate.pem"));
    const QString arguments = QStringLiteral("req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=127.0.0.1 "
                                             "-addext subjectAltName=IP:127.0.0.1 -keyout %1 -out %2");
    if (QProcess::execute(QStringLiteral("openssl"), arguments.arg(key, certificate).split(u' ')) != 0)
        return std::nullopt;
    QFile keyFile(key);
    if (!keyFile.open(QIODevice::ReadOnly))
        return std::nullopt;
    return Certificate{QSslCertificate::fromPath(certificate), QSslKey(&keyFile, QSsl::Rsa)};
}

} // namespace tessaly
