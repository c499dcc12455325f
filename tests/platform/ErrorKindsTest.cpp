#include "platform/common/NetworkFeedDownloader.h"
#include "platform/common/SqliteConnection.h"
#include "tests/support/TestMain.h"

#include <sqlite3.h>

using namespace tessaly;

/// What the libraries beneath report becomes a kind of failure, never their own words.
class ErrorKindsTest : public QObject
{
    Q_OBJECT

private slots:
    void aDatabaseErrorHasAKind_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<ErrorCode>("kind");
        QTest::newRow("full") << SQLITE_FULL << ErrorCode::StorageFull;
        QTest::newRow("busy") << SQLITE_BUSY << ErrorCode::StorageLocked;
        QTest::newRow("busy after a crash") << SQLITE_BUSY_RECOVERY << ErrorCode::StorageLocked;
        QTest::newRow("locked") << SQLITE_LOCKED << ErrorCode::StorageLocked;
        QTest::newRow("read-only") << SQLITE_READONLY << ErrorCode::StorageUnwritable;
        QTest::newRow("no right") << SQLITE_PERM << ErrorCode::StorageUnwritable;
        QTest::newRow("cannot be opened") << SQLITE_CANTOPEN << ErrorCode::StorageUnwritable;
        QTest::newRow("damaged") << SQLITE_CORRUPT << ErrorCode::StorageCorrupt;
        QTest::newRow("no database") << SQLITE_NOTADB << ErrorCode::StorageCorrupt;
        QTest::newRow("reading") << SQLITE_IOERR_READ << ErrorCode::StorageFailed;
        QTest::newRow("memory") << SQLITE_NOMEM << ErrorCode::StorageFailed;
    }

    void aDatabaseErrorHasAKind()
    {
        QFETCH(const int, code);
        QFETCH(const ErrorCode, kind);
        const Error error = SqliteConnection().error(code);
        QCOMPARE(error.code, kind);
        QCOMPARE(error.detail, kind == ErrorCode::StorageFailed ? QString::number(code) : QString());
    }

    void aNetworkErrorHasAKind_data()
    {
        QTest::addColumn<QNetworkReply::NetworkError>("network");
        QTest::addColumn<ErrorCode>("kind");
        QTest::newRow("refused") << QNetworkReply::ConnectionRefusedError << ErrorCode::DownloadConnectionFailed;
        QTest::newRow("no network") << QNetworkReply::UnknownNetworkError << ErrorCode::DownloadConnectionFailed;
        QTest::newRow("no such host") << QNetworkReply::HostNotFoundError << ErrorCode::DownloadHostNotFound;
        QTest::newRow("slow") << QNetworkReply::TimeoutError << ErrorCode::DownloadTimedOut;
        QTest::newRow("cut") << QNetworkReply::RemoteHostClosedError << ErrorCode::DownloadIncomplete;
        QTest::newRow("insecure") << QNetworkReply::InsecureRedirectError << ErrorCode::DownloadInsecureRedirect;
        QTest::newRow("in circles") << QNetworkReply::TooManyRedirectsError << ErrorCode::DownloadTooManyRedirects;
        QTest::newRow("no proxy") << QNetworkReply::ProxyNotFoundError << ErrorCode::DownloadProxyFailed;
        QTest::newRow("proxy asks") << QNetworkReply::ProxyAuthenticationRequiredError
                                    << ErrorCode::DownloadProxyFailed;
        QTest::newRow("no HTTP") << QNetworkReply::ProtocolFailure << ErrorCode::DownloadAnswerInvalid;
        QTest::newRow("anything else") << QNetworkReply::OperationCanceledError << ErrorCode::DownloadFailed;
    }

    void aNetworkErrorHasAKind()
    {
        QFETCH(const QNetworkReply::NetworkError, network);
        QTEST(downloadErrorCode(network), "kind");
    }

    void aRefusedCertificateHasAKind_data()
    {
        QTest::addColumn<QList<QSslError>>("refusals");
        QTest::addColumn<ErrorCode>("kind");
        const auto row = [](const char *name, const QList<QSslError> &refusals, ErrorCode kind) {
            QTest::newRow(name) << refusals << kind;
        };
        const QSslError untrusted(QSslError::SelfSignedCertificate);
        const QSslError otherHost(QSslError::HostNameMismatch);
        row("none seen", {}, ErrorCode::DownloadTlsFailed);
        row("signs itself", {untrusted}, ErrorCode::DownloadCertificateUntrusted);
        row("of another host", {otherHost}, ErrorCode::DownloadCertificateOfOther);
        row("expired", {QSslError(QSslError::CertificateExpired)}, ErrorCode::DownloadCertificateOutdated);
        row("not valid yet, and more", {untrusted, otherHost, QSslError(QSslError::CertificateNotYetValid)},
            ErrorCode::DownloadCertificateOutdated);
    }

    void aRefusedCertificateHasAKind()
    {
        QFETCH(const QList<QSslError>, refusals);
        QTEST(downloadErrorCode(refusals), "kind");
    }
};

TESSALY_TEST_MAIN(ErrorKindsTest)
#include "ErrorKindsTest.moc"
