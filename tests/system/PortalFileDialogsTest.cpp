#include "platform/linux/PortalFileDialogs.h"
#include "tests/support/FakeFileDialogs.h"
#include "tests/support/TestMain.h"
#include "tests/system/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QTimer>

using namespace tessaly;
using namespace Qt::StringLiterals;

/// A file chooser portal that answers as the test wants.
class FakeChooser : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")

public:
    enum class Order { AnswerAfterReply, AnswerBeforeReply };

    Order order = Order::AnswerAfterReply;
    uint response = 0;
    QStringList uris;
    /// Handle that an old portal makes up by itself; empty: the one the caller asked for.
    QString ownHandle;
    bool isRefusing = false;

    bool isSaving = false;

    QString title;
    QVariantMap options;

public slots:
    QDBusObjectPath OpenFile(const QString &, const QString &askedTitle, const QVariantMap &askedOptions)
    {
        title = askedTitle;
        options = askedOptions;
        if (isRefusing) {
            sendErrorReply(QDBusError::UnknownMethod, u"no file chooser"_s);
            return {};
        }
        const QString sender = message().service().mid(1).replace(u'.', u'_');
        const QString handle = ownHandle.isEmpty() ? u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
                                                         sender, askedOptions.value(u"handle_token"_s).toString())
                                                   : ownHandle;
        if (order == Order::AnswerBeforeReply)
            answer(connection(), handle);
        else
            QTimer::singleShot(20, this, [this, bus = connection(), handle] { answer(bus, handle); });
        return QDBusObjectPath(handle);
    }

    QDBusObjectPath SaveFile(const QString &window, const QString &askedTitle, const QVariantMap &askedOptions)
    {
        isSaving = true;
        return OpenFile(window, askedTitle, askedOptions);
    }

private:
    void answer(const QDBusConnection &bus, const QString &handle) const
    {
        QDBusMessage signal = QDBusMessage::createSignal(handle, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        signal << response << QVariantMap{{u"uris"_s, uris}};
        bus.send(signal);
    }
};

/// The adapter on a private bus.
class PortalFileDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_chooser = std::make_unique<FakeChooser>();
        QVERIFY(portalBus().registerObject(u"/org/freedesktop/portal/desktop"_s, m_chooser.get(),
                                           QDBusConnection::ExportAllSlots));
        QVERIFY(portalBus().registerService(u"org.freedesktop.portal.Desktop"_s));
    }

    void cleanup()
    {
        portalBus().unregisterService(u"org.freedesktop.portal.Desktop"_s);
        portalBus().unregisterObject(u"/org/freedesktop/portal/desktop"_s);
    }

    void theUsersChoiceComesBack_data()
    {
        QTest::addColumn<FakeChooser::Order>("order");
        QTest::addColumn<QString>("ownHandle");
        QTest::addColumn<uint>("response");
        QTest::addColumn<QStringList>("expected");
        const QStringList chosen{u"file:///a%20b.md"_s, u"file:///%E6%96%87.md"_s};
        QTest::newRow("chosen") << FakeChooser::Order::AnswerAfterReply << QString() << 0U << chosen;
        QTest::newRow("chosen at once") << FakeChooser::Order::AnswerBeforeReply << QString() << 0U << chosen;
        QTest::newRow("with a handle of the portal's own")
            << FakeChooser::Order::AnswerAfterReply << u"/org/freedesktop/portal/desktop/request/own"_s << 0U << chosen;
        QTest::newRow("cancelled") << FakeChooser::Order::AnswerAfterReply << QString() << 1U << QStringList();
    }

    void theUsersChoiceComesBack()
    {
        QFETCH(const FakeChooser::Order, order);
        QFETCH(const QString, ownHandle);
        QFETCH(const uint, response);
        QFETCH(const QStringList, expected);
        m_chooser->order = order;
        m_chooser->ownHandle = ownHandle;
        m_chooser->response = response;
        m_chooser->uris = {u"file:///a%20b.md"_s, u"file:///%E6%96%87.md"_s};
        PortalFileDialogs dialogs(std::make_unique<FakeFileDialogs>(), clientBus());
        std::optional<QList<QUrl>> answer;

        dialogs.chooseFiles({.title = u"导入"_s, .extensions = {u"md"_s}, .allowsSeveral = true},
                            [&answer](const QList<QUrl> &files) { answer = files; });

        QTRY_VERIFY(answer);
        QStringList uris;
        for (const QUrl &url : *answer)
            uris.append(url.toString(QUrl::FullyEncoded));
        QCOMPARE(uris, expected);
        QCOMPARE(m_chooser->title, u"导入"_s);
        QCOMPARE(m_chooser->options.value(u"multiple"_s), true);
        QVERIFY(!m_chooser->options.contains(u"directory"_s));
        const auto filters = m_chooser->options.value(u"filters"_s).value<QDBusArgument>();
        QCOMPARE(filters.currentSignature(), u"a(sa(us))"_s);
    }

    void aFolderIsAskedForFromWhereTheDocumentsAre()
    {
        m_chooser->uris = {u"file:///new"_s};
        PortalFileDialogs dialogs(std::make_unique<FakeFileDialogs>(), clientBus());
        QUrl answer;

        dialogs.chooseFolder(u"Choose"_s, QUrl::fromLocalFile(u"/文/old"_s),
                             [&answer](const QUrl &folder) { answer = folder; });

        QTRY_COMPARE(answer, QUrl(u"file:///new"_s));
        QCOMPARE(m_chooser->options.value(u"directory"_s), true);
        QCOMPARE(m_chooser->options.value(u"current_folder"_s).toByteArray(), u"/文/old"_s.toUtf8() + '\0');
    }

    void aFileToWriteIsAskedForByItsName()
    {
        m_chooser->uris = {u"file:///new.zip"_s};
        PortalFileDialogs dialogs(std::make_unique<FakeFileDialogs>(), clientBus());
        QUrl answer;

        dialogs.chooseSaveFile(u"Export"_s, u"Tessaly.zip"_s, [&answer](const QUrl &file) { answer = file; });

        QTRY_COMPARE(answer, QUrl(u"file:///new.zip"_s));
        QVERIFY(m_chooser->isSaving);
        QCOMPARE(m_chooser->options.value(u"current_name"_s), u"Tessaly.zip"_s);
    }

    void withoutAPortalOtherDialogsAreAsked_data()
    {
        QTest::addColumn<bool>("hasPortal");
        QTest::addColumn<bool>("hasBus");
        QTest::newRow("no file chooser") << true << true;
        QTest::newRow("no portal") << false << true;
        QTest::newRow("no bus") << false << false;
    }

    void withoutAPortalOtherDialogsAreAsked()
    {
        QFETCH(const bool, hasPortal);
        QFETCH(const bool, hasBus);
        m_chooser->isRefusing = true;
        if (!hasPortal)
            portalBus().unregisterService(u"org.freedesktop.portal.Desktop"_s);
        auto otherwise = std::make_unique<FakeFileDialogs>();
        otherwise->answerFilesWith({QUrl(u"file:///other.md"_s)});
        otherwise->answerFolderWith(QUrl(u"file:///other"_s));
        PortalFileDialogs dialogs(std::move(otherwise), hasBus ? clientBus() : QDBusConnection(u"none"_s));
        QList<QUrl> files;
        QUrl folder;

        dialogs.chooseFiles({}, [&files](const QList<QUrl> &chosen) { files = chosen; });
        dialogs.chooseFolder({}, {}, [&folder](const QUrl &chosen) { folder = chosen; });

        QTRY_COMPARE(files, QList<QUrl>{QUrl(u"file:///other.md"_s)});
        QTRY_COMPARE(folder, QUrl(u"file:///other"_s));
    }

private:
    [[nodiscard]] QDBusConnection portalBus() { return m_bus.connection(u"portal"_s); }
    [[nodiscard]] QDBusConnection clientBus() { return m_bus.connection(u"client"_s); }

    PrivateBus m_bus;
    std::unique_ptr<FakeChooser> m_chooser;
};

TESSALY_TEST_MAIN(PortalFileDialogsTest)
#include "PortalFileDialogsTest.moc"
