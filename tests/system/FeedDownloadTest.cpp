#include "platform/common/NetworkFeedDownloader.h"
#include "store/PlannerStore.h"
#include "tests/store/FakePorts.h"
#include "tests/support/TestMain.h"
#include "tests/system/LoopbackServer.h"

#include <QSslConfiguration>

using namespace tessaly;

namespace {

constexpr std::chrono::milliseconds silence(1000);
constexpr qint64 largestBody = 64 * 1024 * 1024;

QByteArray littleEndian(quint32 value)
{
    return {reinterpret_cast<const char *>(&value), 4};
}

/// RFC 1952; qCompress() gives the deflated bytes between a length, a header and a checksum of its own.
QByteArray gzip(const QByteArray &text)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char c : text) {
        crc ^= static_cast<uchar>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    const QByteArray deflated = qCompress(text).mid(6).chopped(4);
    return QByteArray("\x1F\x8B\x08\0\0\0\0\0\0\xFF", 10) + deflated + littleEndian(~crc) +
           littleEndian(static_cast<quint32>(text.size()));
}

QByteArray calendar(int events)
{
    QByteArray text = "BEGIN:VCALENDAR\r\n";
    for (int i = 0; i < events; ++i)
        text += "BEGIN:VEVENT\r\nUID:" + QByteArray::number(i) +
                "\r\nDTSTART;TZID=Asia/Shanghai:20240902T080000\r\nDTEND;TZID=Asia/Shanghai:20240902T093000\r\n"
                "SUMMARY:Microeconomics and a title long enough to be folded by its\r\n  writer\r\nDESCRIPTION:" +
                QByteArray(60, 'x') + "\r\nEND:VEVENT\r\n";
    return text + "END:VCALENDAR\r\n";
}

QString described(const Result<FeedAnswer> &result)
{
    if (result)
        return QStringLiteral("status %1, body of %2 bytes").arg(result.value().status).arg(result.value().body.size());
    return QStringLiteral("error %1 %2").arg(static_cast<int>(result.error().code)).arg(result.error().detail);
}

} // namespace

class FeedDownloadTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_server = std::make_unique<LoopbackServer>();
        QVERIFY(m_server->isReady());
        m_downloader = std::make_unique<NetworkFeedDownloader>(NetworkFeedDownloader::Limits{silence, largestBody});
    }

    void aCompleteAnswerIsItsBody_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QByteArray>("body");

        const QByteArray text = calendar(3);
        QTest::newRow("200") << response("200 OK", text) << text;
        QTest::newRow("an empty body") << response("200 OK", "") << QByteArray();
        QTest::newRow("204 without a body") << QByteArray("HTTP/1.1 204 No Content\r\n\r\n") << QByteArray();
        QTest::newRow("404 with a page") << response("404 Not Found", "<html>none</html>")
                                         << QByteArray("<html>none</html>");
        QTest::newRow("500 with a page") << response("500 Internal Server Error", "oops") << QByteArray("oops");
        QTest::newRow("401 with a page") << response("401 Unauthorized", "who", "WWW-Authenticate: Basic\r\n")
                                         << QByteArray("who");
        QTest::newRow("Latin-1 bytes as they are") << response("200 OK", "Caf\xE9") << QByteArray("Caf\xE9");
        QTest::newRow("no length, ended by closing") << "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + text << text;
        QTest::newRow("chunked") << QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                               "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n")
                                 << QByteArray("abcde");
        QTest::newRow("gzip") << response("200 OK", gzip(text), "Content-Encoding: gzip\r\n") << text;
        const QByteArray repetitive(20'000'000, 'x');
        QTest::newRow("gzip in two members")
            << response("200 OK", gzip(text) + gzip("more"), "Content-Encoding: gzip\r\n") << text + "more";
        QTest::newRow("gzip of nothing") << response("204 No Content", "", "Content-Encoding: gzip\r\n")
                                         << QByteArray();
        QTest::newRow("gzip of much of the same")
            << response("200 OK", gzip(repetitive), "Content-Encoding: gzip\r\n") << repetitive;
        const QByteArray large(25'000'000, 'y');
        QTest::newRow("25 MB") << response("200 OK", large) << large;
    }

    void aCompleteAnswerIsItsBody()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const QByteArray, body);
        m_server->on(QStringLiteral("/a.ics"), answer);

        const Result<FeedAnswer> result = downloaded();

        QVERIFY2(result, qPrintable(described(result)));
        QVERIFY2(result.value().body == body, qPrintable(described(result)));
    }

    void aBrokenAnswerFails_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<ErrorCode>("expected");

        const QByteArray text = calendar(3);
        const ErrorCode incomplete = ErrorCode::DownloadIncomplete;
        QTest::newRow("no answer at all") << QByteArray() << incomplete;
        QTest::newRow("cut in the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-Le") << incomplete;
        QTest::newRow("cut in the body") << response("200 OK", text).chopped(20) << incomplete;
        QTest::newRow("cut before the body") << response("200 OK", text).chopped(text.size()) << incomplete;
        QTest::newRow("cut in a chunk") << QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                                      "64\r\nabc")
                                        << incomplete;
        QTest::newRow("cut between chunks") << QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                                          "3\r\nabc\r\n")
                                            << incomplete;
        const QByteArray packed = gzip(text);
        QTest::newRow("gzip cut with the right length")
            << response("200 OK", packed.chopped(30), "Content-Encoding: gzip\r\n") << incomplete;
        QTest::newRow("gzip cut by the connection")
            << response("200 OK", packed, "Content-Encoding: gzip\r\n").chopped(30) << incomplete;
        QTest::newRow("not gzip though it says so")
            << response("200 OK", text, "Content-Encoding: gzip\r\n") << incomplete;
        QTest::newRow("too long, as announced")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 67108865\r\n\r\nBEGIN") << ErrorCode::DownloadTooLarge;
        QTest::newRow("too long, not announced")
            << "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + QByteArray(largestBody + 1, 'x')
            << ErrorCode::DownloadTooLarge;
        QTest::newRow("too long when decompressed") << response("200 OK",
                                                                QByteArray("\x1F\x8B\x08\0\0\0\0\0\0\xFF", 10) +
                                                                    qCompress(QByteArray(4 * largestBody, 'x')).mid(6),
                                                                "Content-Encoding: gzip\r\n")
                                                    << ErrorCode::DownloadTooLarge;
    }

    void aBrokenAnswerFails()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const ErrorCode, expected);
        m_server->on(QStringLiteral("/a.ics"), answer);

        const Result<FeedAnswer> result = downloaded();

        QVERIFY2(!result && result.error().code == expected, qPrintable(described(result)));
    }

    void aBodyOfTheLargestSizeIsAccepted()
    {
        m_downloader = std::make_unique<NetworkFeedDownloader>(NetworkFeedDownloader::Limits{silence, 1000});
        m_server->on(QStringLiteral("/a.ics"), response("200 OK", QByteArray(1000, 'x')));

        const Result<FeedAnswer> result = downloaded();

        QVERIFY2(result && result.value().body.size() == 1000, qPrintable(described(result)));
    }

    void redirectsAreFollowedButNotForEver()
    {
        m_server->on(QStringLiteral("/a.ics"), redirect("301 Moved Permanently", m_server->url(QStringLiteral("/b"))));
        m_server->on(QStringLiteral("/b"), redirect("307 Temporary Redirect", QUrl(QStringLiteral("c"))));
        m_server->on(QStringLiteral("/c"), response("200 OK", "here"));
        m_server->on(QStringLiteral("/loop"), redirect("302 Found", m_server->url(QStringLiteral("/loop"))));

        const Result<FeedAnswer> result = downloaded();
        const Result<FeedAnswer> loop = downloaded(QStringLiteral("/loop"));

        QVERIFY2(result && result.value().body == "here", qPrintable(described(result)));
        QVERIFY2(!loop && loop.error().code == ErrorCode::DownloadTooManyRedirects, qPrintable(described(loop)));
    }

    void aSlowDownloadGoesOnWhileBytesCome()
    {
        m_server->on(QStringLiteral("/a.ics"), [](QTcpSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n");
            auto *drip = new QTimer(&socket);
            connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
            drip->start(silence / 10);
        });

        const Result<FeedAnswer> result = downloaded();

        QVERIFY2(result && result.value().body == QByteArray(20, 'x'), qPrintable(described(result)));
    }

    void aSilentServerTimesOut_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("before the head") << QByteArray();
        QTest::newRow("within the body") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\nabc");
    }

    void aSilentServerTimesOut()
    {
        QFETCH(const QByteArray, answer);
        m_server->on(QStringLiteral("/a.ics"), [answer](QTcpSocket &socket) { socket.write(answer); });

        const Result<FeedAnswer> result = downloaded();

        QVERIFY2(!result && result.error().code == ErrorCode::DownloadTimedOut, qPrintable(described(result)));
    }

    void aLinkThatCannotBeReachedFails()
    {
        const QUrl url = m_server->url(QStringLiteral("/a.ics"));
        m_server->close();
        const Result<FeedAnswer> refused = downloaded(url);
        QVERIFY2(!refused && refused.error().code == ErrorCode::DownloadConnectionFailed,
                 qPrintable(described(refused)));

        const Result<FeedAnswer> file = downloaded(QUrl(QStringLiteral("file:///etc/hostname")));
        QVERIFY2(!file && file.error().code == ErrorCode::DownloadFailed, qPrintable(described(file)));
    }

    void theStatusAndTheVersionAreToldAndAKnownVersionIsNamed_data()
    {
        QTest::addColumn<FeedVersion>("known");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<FeedAnswer>("expected");
        QTest::addColumn<QByteArrayList>("asked");

        const FeedVersion both{"\"v1\"", "Sun, 22 Nov 2026 09:10:00 GMT"};
        const QByteArray headers = "ETag: \"v1\"\r\nLast-Modified: Sun, 22 Nov 2026 09:10:00 GMT\r\n";
        QTest::newRow("first") << FeedVersion() << response("200 OK", "new", headers)
                               << FeedAnswer{.status = 200, .body = "new", .version = both} << QByteArrayList();
        QTest::newRow("modified") << FeedVersion{"W/\"v0\"", {}} << response("200 OK", "new", headers)
                                  << FeedAnswer{.status = 200, .body = "new", .version = both}
                                  << QByteArrayList{"If-None-Match: W/\"v0\""};
        const QByteArray unmodified = "HTTP/1.1 304 Not Modified\r\n" + headers + "Connection: close\r\n\r\n";
        QTest::newRow("not modified") << both << unmodified << FeedAnswer{.status = 304, .version = both}
                                      << QByteArrayList{"If-None-Match: \"v1\"",
                                                        "If-Modified-Since: Sun, 22 Nov 2026 09:10:00 GMT"};
        QTest::newRow("gone") << FeedVersion{{}, both.lastModified} << response("404 Not Found", "none")
                              << FeedAnswer{.status = 404, .body = "none"}
                              << QByteArrayList{"If-Modified-Since: Sun, 22 Nov 2026 09:10:00 GMT"};
        QTest::newRow("broken") << FeedVersion() << response("500 Internal Server Error", "oops")
                                << FeedAnswer{.status = 500, .body = "oops"} << QByteArrayList();
    }

    void theStatusAndTheVersionAreToldAndAKnownVersionIsNamed()
    {
        QFETCH(const FeedVersion, known);
        QFETCH(const QByteArray, answer);
        QFETCH(const FeedAnswer, expected);
        QFETCH(const QByteArrayList, asked);
        m_server->on(QStringLiteral("/a.ics"), answer);

        const Result<FeedAnswer> result = downloaded(m_server->url(QStringLiteral("/a.ics")), known);

        QVERIFY2(result, qPrintable(described(result)));
        QCOMPARE(result.value().status, expected.status);
        QCOMPARE(result.value().body, expected.body);
        QCOMPARE(result.value().version, expected.version);
        QByteArrayList conditions;
        for (const QByteArray &line : m_server->requests().constLast().split('\n')) {
            if (line.startsWith("If-"))
                conditions.append(line.trimmed());
        }
        std::ranges::sort(conditions);
        QByteArrayList expectedConditions = asked;
        std::ranges::sort(expectedConditions);
        QCOMPARE(conditions, expectedConditions);
    }

    void aTimetableIsFollowedOverTheTerm()
    {
        // A link on a real server, followed for a week: it changes, fails, moves on, and is read by itself throughout.
        FakePorts fakes;
        PlannerStore store(fakes.portsOver(*m_downloader));
        store.start();
        const auto serve = [&](int events, const QByteArray &tag) {
            const QByteArray body = calendar(events);
            m_server->on(QStringLiteral("/timetable.ics"), [=, this](QTcpSocket &socket) {
                const bool isKnown = m_server->requests().constLast().contains("If-None-Match: " + tag);
                const QByteArray version = "ETag: " + tag + "\r\n";
                socket.write(isKnown ? "HTTP/1.1 304 Not Modified\r\nConnection: close\r\n\r\n"
                                     : response("200 OK", body, version));
                socket.disconnectFromHost();
            });
        };
        const auto readings = [&](int hours) {
            const qsizetype asked = m_server->requests().size();
            for (int hour = 0; hour < hours; ++hour) {
                fakes.clock.advance(3600 * 1.1);
                const Instant now = fakes.clock.now();
                const CalendarFeed &link = store.calendarFeeds().constFirst();
                if (!QTest::qWaitFor([&] { return store.calendarLinks().lastRead(link) == std::optional(now); }))
                    return qsizetype(-1);
            }
            return m_server->requests().size() - asked;
        };
        serve(40, "\"monday\"");
        store.calendarLinks().addCalendarFeed(m_server->url(QStringLiteral("/timetable.ics")).toString(),
                                              {.isKeptUpToDate = true});
        QTRY_COMPARE(store.schedules().size(), 40);

        QCOMPARE(readings(24), 24);
        QCOMPARE(m_server->requests().constLast().contains("If-None-Match: \"monday\""), true);
        QCOMPARE(store.schedules().size(), 40);

        serve(42, "\"tuesday\"");
        QCOMPARE(readings(1), 1);
        QTRY_COMPARE(store.schedules().size(), 42);

        m_server->on(QStringLiteral("/timetable.ics"), response("404 Not Found", "<html>none</html>"));
        fakes.clock.advance(3600 * 1.1);
        const QUuid feed = store.calendarFeeds().constFirst().id;
        QTRY_VERIFY(store.calendarLinks().health(feed)->failingSince);
        QCOMPARE(store.calendarLinks().health(feed)->failure.english,
                 QStringLiteral("the server says the file is gone (404)"));
        QCOMPARE(store.schedules().size(), 42);

        serve(41, "\"friday\"");
        fakes.clock.advance(6 * 3600 * 1.1);
        QTRY_COMPARE(store.schedules().size(), 41);
        QVERIFY(!store.calendarLinks().health(feed)->failingSince);
    }

    void cookiesAreNotKept()
    {
        m_server->on(QStringLiteral("/a.ics"), response("200 OK", "a", "Set-Cookie: track=1\r\n"));

        (void)downloaded();
        (void)downloaded();

        QCOMPARE(m_server->requests().size(), 2);
        QVERIFY(m_server->requests().constFirst().startsWith("GET /a.ics HTTP/1.1"));
        QVERIFY(!m_server->requests().constLast().toLower().contains("cookie"));
    }

    void aSecureLinkStaysSecure()
    {
        const std::optional<Certificate> certificate = makeCertificate();
        if (!certificate)
            QSKIP("openssl, which makes the certificate, is missing");
        LoopbackServer secure;
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setLocalCertificateChain(certificate->chain);
        tls.setPrivateKey(certificate->key);
        secure.setTls(tls);
        secure.on(QStringLiteral("/a.ics"), response("200 OK", "secret"));
        secure.on(QStringLiteral("/down"), redirect("302 Found", m_server->url(QStringLiteral("/a.ics"))));
        m_server->on(QStringLiteral("/a.ics"), response("200 OK", "open"));
        m_server->on(QStringLiteral("/up"), redirect("302 Found", secure.url(QStringLiteral("/a.ics"))));

        const Result<FeedAnswer> untrusted = downloaded(secure.url(QStringLiteral("/a.ics")));
        QVERIFY2(!untrusted && untrusted.error().code == ErrorCode::DownloadCertificateUntrusted,
                 qPrintable(described(untrusted)));

        const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
        QSslConfiguration trusting = before;
        trusting.addCaCertificates(certificate->chain);
        QSslConfiguration::setDefaultConfiguration(trusting);
        // The one before keeps the settings of hosts it has talked to.
        m_downloader = std::make_unique<NetworkFeedDownloader>();
        const Result<FeedAnswer> trusted = downloaded(secure.url(QStringLiteral("/a.ics")));
        const Result<FeedAnswer> upwards = downloaded(QStringLiteral("/up"));
        const Result<FeedAnswer> downwards = downloaded(secure.url(QStringLiteral("/down")));
        QSslConfiguration::setDefaultConfiguration(before);

        QVERIFY2(trusted && trusted.value().body == "secret", qPrintable(described(trusted)));
        QVERIFY2(upwards && upwards.value().body == "secret", qPrintable(described(upwards)));
        QVERIFY2(!downwards && downwards.error().code == ErrorCode::DownloadInsecureRedirect,
                 qPrintable(described(downwards)));
    }

    void aDownloaderMayGoDuringADownload()
    {
        m_server->on(QStringLiteral("/a.ics"), [this](QTcpSocket &) { m_downloader.reset(); });
        bool isCompleted = false;
        m_downloader->download(m_server->url(QStringLiteral("/a.ics")), {}, [&](const auto &) { isCompleted = true; });

        QTRY_VERIFY(!m_downloader);
        QCoreApplication::processEvents();
        QVERIFY(!isCompleted);
    }

    void aServedCalendarFillsThePlanner_data()
    {
        QTest::addColumn<int>("events");
        QTest::newRow("a timetable") << 500;
        QTest::newRow("25 MB") << 100'000;
    }

    void aServedCalendarFillsThePlanner()
    {
        QFETCH(const int, events);
        m_server->on(QStringLiteral("/timetable.ics"), response("200 OK", calendar(events)));
        FakePorts fakes;
        PlannerStore store(fakes.portsOver(*m_downloader));

        store.calendarLinks().addCalendarFeed(m_server->url(QStringLiteral("/timetable.ics")).toString());

        QTRY_COMPARE_WITH_TIMEOUT(store.schedules().size(), events, 60'000);
        QCOMPARE(store.schedules().constLast().date, Instant::fromUnixSeconds(1725235200));
        QCOMPARE(store.calendarSyncMessage(), QStringLiteral("链接日历已更新，共导入 %1 个日程。").arg(events));
    }

private:
    Result<FeedAnswer> downloaded(const QUrl &url, const FeedVersion &known = {})
    {
        std::optional<Result<FeedAnswer>> result;
        bool isLater = false;
        m_downloader->download(url, known, [&](Result<FeedAnswer> answer) {
            Q_ASSERT(isLater && !result);
            result = std::move(answer);
        });
        isLater = true;
        (void)QTest::qWaitFor([&] { return result.has_value(); }, 60'000);
        return result.value_or(Error{ErrorCode::StorageFailed, QStringLiteral("never completed")});
    }
    Result<FeedAnswer> downloaded(const QString &path = QStringLiteral("/a.ics"))
    {
        return downloaded(m_server->url(path));
    }

    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<NetworkFeedDownloader> m_downloader;
};

TESSALY_TEST_MAIN(FeedDownloadTest)
#include "FeedDownloadTest.moc"
