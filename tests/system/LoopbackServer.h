#pragma once

#include <QByteArray>
#include <QHash>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <optional>

namespace tessaly {

/// An HTTP server on 127.0.0.1 that writes to each path exactly the bytes it was told to, headers and all, so that
/// broken answers can be served too.
class LoopbackServer : public QTcpServer
{
public:
    using Answer = std::function<void(QTcpSocket &socket)>;

    LoopbackServer() { m_isListening = listen(QHostAddress::LocalHost); }

    [[nodiscard]] bool isReady() const { return m_isListening; }
    [[nodiscard]] QUrl url(const QString &path) const
    {
        return QUrl(QStringLiteral("%1://127.0.0.1:%2%3").arg(m_tls ? u"https" : u"http").arg(serverPort()).arg(path));
    }

    /// Speaks TLS from now on.
    void setTls(const QSslConfiguration &configuration) { m_tls = configuration; }
    void on(const QString &path, const Answer &answer) { m_answers.insert(path.toUtf8(), answer); }
    /// Answers with these bytes and closes the connection.
    void on(const QString &path, const QByteArray &bytes)
    {
        on(path, [bytes](QTcpSocket &socket) {
            socket.write(bytes);
            socket.disconnectFromHost();
        });
    }

    /// The heads of the requests so far.
    [[nodiscard]] const QByteArrayList &requests() const { return m_requests; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    void serve(QTcpSocket &socket);

    bool m_isListening = false;
    std::optional<QSslConfiguration> m_tls;
    QHash<QByteArray, Answer> m_answers;
    QByteArrayList m_requests;
};

/// A certificate for 127.0.0.1 that signs itself.
struct Certificate
{
    QList<QSslCertificate> chain;
    QSslKey key;
};

/// Made by openssl; nothing where that is missing.
[[nodiscard]] std::optional<Certificate> makeCertificate();

/// A complete answer with a Content-Length.
[[nodiscard]] inline QByteArray response(const QByteArray &status, const QByteArray &body,
                                         const QByteArray &furtherHeaders = {})
{
    return "HTTP/1.1 " + status +
           "\r\nContent-Type: text/calendar\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" +
           furtherHeaders + "Connection: close\r\n\r\n" + body;
}

[[nodiscard]] inline QByteArray redirect(const QByteArray &status, const QUrl &target)
{
    return response(status, "moved", "Location: " + target.toEncoded() + "\r\n");
}

} // namespace tessaly
