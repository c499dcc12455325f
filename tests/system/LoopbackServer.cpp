#include "tests/system/LoopbackServer.h"

#include <QSslSocket>

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

} // namespace tessaly
